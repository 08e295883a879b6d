#include "commercial/registro.h"

#include "commercial/frmarticulos.h"
#include "commercial/frmgesfaccli.h"
#include "toolkit/registro.h"

void registraCommercial(Registro& registro) {
  registro.registra<FrmArticulos>();
  registro.registra<FrmGesFacCli>();
}
