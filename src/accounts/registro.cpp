#include "accounts/registro.h"

#include "accounts/frmconceptos.h"
#include "accounts/frmcrearplan.h"
#include "accounts/frmcuentas.h"
#include "accounts/frmcuentaslista.h"
#include "accounts/frmdatosauxiliares.h"
#include "accounts/frmnivel1.h"
#include "accounts/frmnivel2.h"
#include "accounts/frmsubcuentas.h"
#include "accounts/frmvisualizaplan.h"
#include "toolkit/registro.h"

void registraAccounts(Registro& formularios) {
  formularios.registra<FrmSubCuentas>();
  formularios.registra<FrmCuentas>();
  formularios.registra<FrmDatosAuxiliares>();
  formularios.registra<FrmCuentasLista>();
  formularios.registra<FrmVisualizaPlan>();
  formularios.registra<FrmNivel1>();
  formularios.registra<FrmNivel2>();
  formularios.registra<FrmConceptos>();
  formularios.registra<FrmCrearPlan>();
}
