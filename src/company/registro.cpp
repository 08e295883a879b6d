#include "company/registro.h"

#include "company/frmempresas.h"
#include "toolkit/registro.h"

void registraCompany(Registro& registro) {
  registro.registra<FrmEmpresas>();
}
