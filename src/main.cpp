// Librano: builds the services of the house, registers the screens and shows the first one.
#include <cstdlib>
#include <QApplication>
#include <QStandardPaths>

#include "accounts/registro.h"
#include "cartera/registro.h"
#include "commercial/registro.h"
#include "common/errorejecucion.h"
#include "company/registro.h"
#include "engine/dbengine.h"
#include "iva/registro.h"
#include "journal/registro.h"
#include "oficial/registro.h"
#include "payroll/registro.h"
#include "reports/registro.h"
#include "start/instancia.h"
#include "start/programas.h"
#include "start/registro.h"
#include "toolkit/cajasqt.h"
#include "toolkit/contexto.h"
#include "toolkit/espera.h"
#include "toolkit/fallo.h"
#include "toolkit/formulario.h"
#include "toolkit/registro.h"
#include "toolkit/tema.h"
#include "transfer/registro.h"
#include "yearend/registro.h"

namespace {

void registraFormularios(Registro& registro) {
  registraStart(registro);
  registraCompany(registro);
  registraAccounts(registro);
  registraJournal(registro);
  registraReports(registro);
  registraIVA(registro);
  registraCartera(registro);
  registraPayroll(registro);
  registraYearend(registro);
  registraTransfer(registro);
  registraOficial(registro);
  registraCommercial(registro);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Librano"));
  aplicarTema(app);

  const Instancia instancia(QStringLiteral("librano"));
  const Reloj reloj;
  DBEngine motor;
  Contexto contexto(motor);
  CajasQt cajas(contexto.motor);
  const Espera espera(motor);
  Registro registro(contexto);
  contexto.reloj = &reloj;
  contexto.cajas = &cajas;
  contexto.formularios = &registro;
  contexto.carpetaPrograma =
      carpetaDelPrograma(QApplication::applicationDirPath(),
                         QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                             QStringLiteral("/Librano"));
  contexto.ejecutar = ejecutaPrograma;
  contexto.copiaUnica = [&instancia] { return instancia.unica(); };
  contexto.terminar = [&contexto] {
    try {
      contexto.cajas->guardaPendiente(nullptr);
    } catch (const ErrorEjecucion& e) {
      avisa(contexto, nullptr, {e, QStringLiteral("Fin del programa")});
    }
    std::_Exit(EXIT_SUCCESS);
  };

  registraFormularios(registro);
  registro.cambiarA(QStringLiteral("FrmPresentacion"));
  return QApplication::exec();
}
