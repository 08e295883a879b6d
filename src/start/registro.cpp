#include "start/registro.h"

#include "start/frmacercade.h"
#include "start/frmconfiguracion.h"
#include "start/frminiciosoftware.h"
#include "start/frmpresentacion.h"
#include "start/frmseldirectorios.h"
#include "start/frmseleccion.h"
#include "toolkit/registro.h"

void registraStart(Registro& registro) {
  registro.registra<FrmPresentacion>();
  registro.registra<FrmSeleccion>();
  registro.registra<FrmInicioSoftware>();
  registro.registra<FrmConfiguracion>();
  registro.registra<FrmSelDirectorios>();
  registro.registra<FrmAcercaDe>();
}
