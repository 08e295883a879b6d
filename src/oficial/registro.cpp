#include "oficial/registro.h"

#include "oficial/frmconversion2007.h"
#include "oficial/frmdatosregistros.h"
#include "oficial/frmdeclarante.h"
#include "oficial/frmestados.h"
#include "oficial/frminmuebles347.h"
#include "oficial/frmlibrosregistro.h"
#include "oficial/frmmodelo303.h"
#include "oficial/frmmodelo347.h"
#include "oficial/frmnorma43.h"
#include "oficial/frmplan2007.h"
#include "oficial/frmrevision.h"
#include "oficial/frmtiposporfechas.h"
#include "toolkit/registro.h"

void registraOficial(Registro& registro) {
  registro.registra<FrmPlan2007>();
  registro.registra<FrmEstados>();
  registro.registra<FrmTiposPorFechas>();
  registro.registra<FrmDatosRegistros>();
  registro.registra<FrmDeclarante>();
  registro.registra<FrmModelo303>();
  registro.registra<FrmModelo347>();
  registro.registra<FrmInmuebles347>();
  registro.registra<FrmLibrosRegistro>();
  registro.registra<FrmConversion2007>();
  registro.registra<FrmNorma43>();
  registro.registra<FrmRevision>();
}
