#include "company/frmempresas.h"
#include "company/registro.h"
#include "foundation/toolkit/registro.h"

void registraCompany(Registro& registro) {
  registro.registra<FrmEmpresas>();
}
