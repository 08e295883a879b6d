#include "iva/registro.h"

#include "iva/frm347.h"
#include "iva/frmeliminaasientosiva.h"
#include "iva/frmivaacumulados.h"
#include "iva/frmivaintercomunitario.h"
#include "iva/frmivarenumera.h"
#include "iva/frmivarevisarbases.h"
#include "iva/frmivasr.h"
#include "iva/frmivasrlibros.h"
#include "iva/frmtiposiva.h"
#include "toolkit/registro.h"

void registraIVA(Registro& registro) {
  registro.registra<FrmIVASR>();
  registro.registra<FrmIVAIntercomunitario>();
  registro.registra<FrmTiposIVA>();
  registro.registra<FrmIVAAcumulados>();
  registro.registra<FrmIVASRLibros>();
  registro.registra<Frm347>();
  registro.registra<FrmIVARenumera>();
  registro.registra<FrmEliminaAsientosIVA>();
  registro.registra<FrmIVARevisarBases>();
}
