#include "reports/registro.h"

#include "reports/frmacumulados.h"
#include "reports/frmbalanceimpresos.h"
#include "reports/frmdiarioimprimir.h"
#include "reports/frmextractoentractas.h"
#include "reports/frmextractos.h"
#include "reports/frmextractospantalla.h"
#include "reports/frmperdidasygananciasimpresos.h"
#include "reports/frmsubcuentasimpresos.h"
#include "reports/frmsumassaldosimpresos.h"
#include "toolkit/registro.h"

void registraReports(Registro& registro) {
  registro.registra<FrmAcumulados>();
  registro.registra<FrmBalanceImpresos>();
  registro.registra<FrmDiarioImprimir>();
  registro.registra<FrmExtractoEntraCtas>();
  registro.registra<FrmExtractos>();
  registro.registra<FrmExtractosPantalla>();
  registro.registra<FrmPerdidasYGananciasImpresos>();
  registro.registra<FrmSubcuentasImpresos>();
  registro.registra<FrmSumasSaldosImpresos>();
}
