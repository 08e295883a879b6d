#include "accounts/frmcrearplan.h"

#include "accounts/crearplan.h"
#include "accounts/plan2007.h"
#include "engine/dbengine.h"
#include "toolkit/registro.h"
#include "ui_frmcrearplan.h"

namespace {
constexpr int kDeEmpresa = 1;
constexpr int kDe2007 = 2;
}  // namespace

FrmCrearPlan::FrmCrearPlan(Contexto& contexto)
    : Formulario(contexto),
      ui_(std::make_unique<Ui::FrmCrearPlan>()),
      DtaEmpresas_(contexto.motor) {
  ui_->setupUi(this);
  DtaEmpresas_.setObjectName("DtaEmpresas");
  ui_->TxtEmpresa->enlazar(DtaEmpresas_, "NombreEmpresa");
  alElegirOpcion("OptCreaAPartirDe", [this](int origen) { OptCreaAPartirDe_Click(origen); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { cierra(); });
}

FrmCrearPlan::~FrmCrearPlan() = default;

void FrmCrearPlan::Form_Load() {
  DtaEmpresas_.bind(sesion().rutaCatalogo(), "Select * from Empresas order by NombreEmpresa");
  setOpcion("OptCreaAPartirDe", 0);
}

void FrmCrearPlan::OptCreaAPartirDe_Click(int origen) {
  const bool deEmpresa = origen == kDeEmpresa;
  ui_->FraModelo->setEnabled(origen == kDe2007);
  ui_->TxtEmpresa->setEnabled(deEmpresa);
  if (!deEmpresa) ui_->TxtEmpresa->setCurrentIndex(-1);
  for (QCheckBox* casilla :
       {ui_->ChkSubcuentas, ui_->ChkTipoIva, ui_->ChkTipoCartera, ui_->ChkRestoCartera}) {
    casilla->setEnabled(deEmpresa);
    if (!deEmpresa) casilla->setChecked(false);
  }
}

FrmCrearPlan::Destino FrmCrearPlan::destino() const {
  const Formulario* nueva = ctx.formularios->abierto("FrmEmpresas");
  if (!nueva)
    return {ctx.sesion.EmpresaActual, ctx.sesion.DigitosCuenta, ctx.sesion.DigitosSubcuenta};
  const auto campo = [nueva](const char* nombre) {
    return nueva->findChild<QLineEdit*>(nombre)->text();
  };
  return {campo("TxtNombreEmpresa"), campo("TxtMayNivel").toInt(), campo("TxtSubNivel").toInt()};
}

void FrmCrearPlan::CmdAceptar_Click() {
  const Destino empresa = destino();
  const int origen = opcion("OptCreaAPartirDe");
  if (origen == kDeEmpresa) {
    if (!copia(empresa)) return;
  } else {
    const auto base = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa(empresa.empresa));
    if (origen == kDe2007)
      estrenaPlan2007(*base, opcion("OptModelo") == 0 ? Modelo2007::Normal : Modelo2007::Pymes,
                      empresa.digitosCuenta, ctx.reloj->hoy());
    else
      siembraPlan(*base, empresa.digitosCuenta);
  }
  cierra();
}

bool FrmCrearPlan::copia(const Destino& destino) {
  const QString elegida = ui_->TxtEmpresa->texto();
  if (elegida.compare(destino.empresa, Qt::CaseInsensitive) == 0) {
    mensaje("No puede copiar un plan de cuentas sobre la misma empresa", "Librano");
    return false;
  }
  Workspace& area = ctx.motor.Workspaces(0);
  const auto origen = area.OpenDatabase(sesion().rutaEmpresa(elegida));
  if (!anchurasCopiables(*origen, destino.digitosCuenta, destino.digitosSubcuenta)) {
    mensaje(
        "El tamaño de las subcuentas es diferente en la empresa seleccionada y no se podra "
        "copiar el plan.",
        "Error");
    return false;
  }
  const auto base = area.OpenDatabase(sesion().rutaEmpresa(destino.empresa));
  copiaPlan(*origen, *base,
            {.Subcuentas = ui_->ChkSubcuentas->isChecked(),
             .TiposIva = ui_->ChkTipoIva->isChecked(),
             .TiposCartera = ui_->ChkTipoCartera->isChecked(),
             .RestoCartera = ui_->ChkRestoCartera->isChecked()});
  // The names of the levels go with the plan, and so does what it is.
  if (const Plan2007DeEmpresa plan = plan2007De(*origen); plan.sigue) {
    ponNivelesDe2007(*base, plan.modelo);
    anotaPlan2007(*base, plan.modelo, ctx.reloj->hoy());
  }
  return true;
}

// A company being created is done with when its plan is, or when there is to be none.
void FrmCrearPlan::cierra() {
  descargar();
  if (Formulario* nueva = ctx.formularios->abierto("FrmEmpresas")) nueva->descargar();
}
