#include "transfer/registro.h"

#include "toolkit/registro.h"
#include "transfer/frmcompruebaempresa.h"
#include "transfer/frmcopias.h"
#include "transfer/frmexportaempresa.h"
#include "transfer/frmguardarempresa.h"
#include "transfer/frmimportarcontanet.h"
#include "transfer/frmimportarcontaplus.h"
#include "transfer/frmreindexa.h"
#include "transfer/frmreindexa2.h"
#include "transfer/frmreindexa3.h"
#include "transfer/frmreparaempresa.h"

void registraTransfer(Registro& registro) {
  registro.registra<FrmCopias>();
  registro.registra<FrmExportaEmpresa>();
  registro.registra<FrmGuardarEmpresa>();
  registro.registra<FrmReindexa>();
  registro.registra<FrmReindexa2>();
  registro.registra<FrmReindexa3>();
  registro.registra<FrmReparaEmpresa>();
  registro.registra<FrmCompruebaEmpresa>();
  registro.registra<FrmImportarContanet>();
  registro.registra<FrmImportarContaplus>();
}
