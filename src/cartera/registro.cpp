#include "cartera/registro.h"

#include "cartera/frmrecibos.h"
#include "cartera/frmrecibosimpresos.h"
#include "cartera/frmreciboslista.h"
#include "cartera/frmrecibostipos.h"
#include "toolkit/registro.h"

void registraCartera(Registro& registro) {
  registro.registra<FrmRecibosLista>();
  registro.registra<FrmRecibos>();
  registro.registra<FrmRecibosTipos>();
  registro.registra<FrmRecibosImpresos>();
}
