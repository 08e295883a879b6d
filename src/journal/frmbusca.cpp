#include "journal/frmbusca.h"

#include <QLineEdit>

#include "common/errorejecucion.h"
#include "engine/datacontrol.h"
#include "toolkit/principal.h"

void FrmBusca::localiza(const QString& sentencia, const QString& sinFilas) {
  Principal& menu = *ctx.principal;
  DataControl& diario = menu.DtaDiarioLista();
  try {
    diario.bind(sesion().rutaEmpresa(), sentencia);
    menu.TxtAsiento().setText(diario.Fields("NAsiento").text());
  } catch (const ErrorEjecucion& e) {
    // Nothing was looked for: the journal stays on show, and the user reads why.
    if (e.numero() != err::kSinRegistroActivo) throw;
    if (!sinFilas.isEmpty()) {
      error(sinFilas);
      menu.TxtAsiento().clear();
    }
  }
  descargar();
}
