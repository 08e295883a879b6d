#include "yearend/registro.h"

#include "toolkit/registro.h"
#include "yearend/frmapertura.h"
#include "yearend/frmcierre.h"
#include "yearend/frminvertircierre.h"
#include "yearend/frmperdidasyganacias.h"
#include "yearend/frmregularizastocks.h"

void registraYearend(Registro& registro) {
  registro.registra<FrmRegularizaStocks>();
  registro.registra<FrmPerdidasyGanacias>();
  registro.registra<FrmCierre>();
  registro.registra<FrmInvertirCierre>();
  registro.registra<FrmApertura>();
}
