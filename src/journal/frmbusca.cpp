#include "journal/frmbusca.h"

#include <QLineEdit>

#include "common/errorejecucion.h"
#include "common/ignorar.h"
#include "engine/datacontrol.h"
#include "toolkit/principal.h"

void FrmBusca::localiza(const QString& sentencia, const QString& sinFilas) {
  Principal& menu = *ctx.principal;
  DataControl& diario = menu.DtaDiarioLista();
  const QString antes = diario.RecordSource();
  try {
    diario.bind(sesion().rutaEmpresa(), sentencia);
    menu.TxtAsiento().setText(diario.Fields("NAsiento").text());
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kSinRegistroActivo) {
      // Nothing was looked for: the journal stays on show, and the user reads why.
      ignorando([&] { diario.bind(sesion().rutaEmpresa(), antes); });
      throw;
    }
    if (!sinFilas.isEmpty()) {
      error(sinFilas);
      menu.TxtAsiento().clear();
    }
  }
  descargar();
}
