#include "oficial/registro.h"

#include "oficial/frmestados.h"
#include "oficial/frmplan2007.h"
#include "toolkit/registro.h"

void registraOficial(Registro& registro) {
  registro.registra<FrmPlan2007>();
  registro.registra<FrmEstados>();
}
