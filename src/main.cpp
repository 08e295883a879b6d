// Librano: builds the services of the house, registers the screens and shows the first one.
#include <cstdlib>
#include <QApplication>
#include <QStandardPaths>

#include "accounts/registro.h"
#include "company/registro.h"
#include "foundation/data/dbengine.h"
#include "foundation/instancia.h"
#include "foundation/programas.h"
#include "foundation/registro.h"
#include "foundation/toolkit/cajasqt.h"
#include "foundation/toolkit/contexto.h"
#include "foundation/toolkit/formulario.h"
#include "foundation/toolkit/registro.h"
#include "foundation/toolkit/tema.h"
#include "journal/registro.h"
#include "reports/registro.h"

namespace {

void registraFormularios(Registro& registro) {
  registraFoundation(registro);
  registraCompany(registro);
  registraAccounts(registro);
  registraJournal(registro);
  registraReports(registro);
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
    contexto.motor.flush();
    std::_Exit(EXIT_SUCCESS);
  };

  registraFormularios(registro);
  registro.cambiarA(QStringLiteral("FrmPresentacion"));
  return QApplication::exec();
}
