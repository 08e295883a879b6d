#include "company/registro.h"
#include "company/frmempresas.h"
#include "foundation/toolkit/registro.h"

void registraCompany(Registro& registro) {
  registro.registra<FrmEmpresas>();
}
