#include "payroll/registro.h"

#include "payroll/frmnomina.h"
#include "toolkit/registro.h"

void registraPayroll(Registro& registro) {
  registro.registra<FrmNomina>();
}
