#include "iva/registro.h"

#include "iva/frmivaintercomunitario.h"
#include "iva/frmivasr.h"
#include "toolkit/registro.h"

void registraIVA(Registro& registro) {
  registro.registra<FrmIVASR>();
  registro.registra<FrmIVAIntercomunitario>();
}
