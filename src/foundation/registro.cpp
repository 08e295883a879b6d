#include "foundation/registro.h"
#include "foundation/frmconfiguracion.h"
#include "foundation/frminiciosoftware.h"
#include "foundation/frmpresentacion.h"
#include "foundation/frmseldirectorios.h"
#include "foundation/frmseleccion.h"
#include "foundation/toolkit/registro.h"

void registraFoundation(Registro& registro) {
  registro.registra<FrmPresentacion>();
  registro.registra<FrmSeleccion>();
  registro.registra<FrmInicioSoftware>();
  registro.registra<FrmConfiguracion>();
  registro.registra<FrmSelDirectorios>();
}
