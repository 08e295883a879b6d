#include "journal/frmbusca.h"

#include <QLineEdit>

#include "common/errorejecucion.h"
#include "engine/datacontrol.h"
#include "toolkit/principal.h"

void FrmBusca::localiza(const QString& sentencia, const QString& sinFilas) {
  Principal& menu = *ctx.principal;
  try {
    menu.DtaDiarioLista().bind(sesion().rutaEmpresa(), sentencia);
    menu.TxtAsiento().setText(menu.DtaDiarioLista().Fields("NAsiento").text());
  } catch (const ErrorEjecucion&) {
    if (!sinFilas.isEmpty()) {
      error(sinFilas);
      menu.TxtAsiento().clear();
    }
  }
  descargar();
}
