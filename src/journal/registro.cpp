#include "journal/registro.h"

#include "journal/frmasiento.h"
#include "journal/frmbusapu.h"
#include "journal/frmbusasi.h"
#include "journal/frmbusdes.h"
#include "journal/frmbusfec.h"
#include "journal/frmbusimp.h"
#include "journal/frmbussub.h"
#include "journal/frmcalendario.h"
#include "journal/frmcambiadatos.h"
#include "journal/frmcompruebafechasasientos.h"
#include "journal/frmcuadrarasientos.h"
#include "journal/frmduplicarasiento.h"
#include "journal/frmeliminaasiento.h"
#include "journal/frmmenu.h"
#include "journal/frmpartida.h"
#include "journal/frmrenumera.h"
#include "toolkit/registro.h"

void registraJournal(Registro& registro) {
  registro.registra<FrmAsiento>();
  registro.registra<FrmBusApu>();
  registro.registra<FrmBusAsi>();
  registro.registra<FrmBusDes>();
  registro.registra<FrmBusFec>();
  registro.registra<FrmBusImp>();
  registro.registra<FrmBusSub>();
  registro.registra<FrmCalendario>();
  registro.registra<FrmCambiadatos>();
  registro.registra<FrmCompruebaFechasAsientos>();
  registro.registra<FrmCuadrarAsientos>();
  registro.registra<FrmDuplicarAsiento>();
  registro.registra<FrmEliminaAsiento>();
  registro.registra<FrmMenu>();
  registro.registra<FrmPartida>();
  registro.registra<FrmRenumera>();
}
