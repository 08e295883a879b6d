#include "reports/frmsubcuentasimpresos.h"

#include "common/comillas.h"
#include "common/funciones.h"
#include "engine/dbengine.h"
#include "toolkit/protocolo.h"
#include "ui_frmsubcuentasimpresos.h"

FrmSubcuentasImpresos::FrmSubcuentasImpresos(Contexto& contexto)
    : FrmListado(contexto),
      ui_(std::make_unique<Ui::FrmSubcuentasImpresos>()),
      DtaSubcuentas_(contexto.motor) {
  ui_->setupUi(this);
  sinIntro(ui_->TxtSubcuentasDesde);
  alTeclear(ui_->TxtSubcuentasDesde, [this](Tecla& t) { TxtSubcuentasDesde_KeyPress(t); });
  alSalir(ui_->TxtSubcuentasHasta,
          [this] { busca(ui_->TxtSubcuentasHasta, ui_->LblHasta, accion::kListadoHasta); });
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmSubcuentasImpresos::~FrmSubcuentasImpresos() = default;

void FrmSubcuentasImpresos::Form_Load() {
  for (QLineEdit* campo : {ui_->TxtSubcuentasDesde, ui_->TxtSubcuentasHasta})
    campo->setMaxLength(sesion().DigitosSubcuenta);
}

void FrmSubcuentasImpresos::TxtSubcuentasDesde_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  if (busca(ui_->TxtSubcuentasDesde, ui_->LblDesde, accion::kListadoDesde))
    enfocar(ui_->TxtSubcuentasHasta);
}

bool FrmSubcuentasImpresos::busca(QLineEdit* campo, QLabel* nombre, int codigoAccion) {
  try {
    campo->setText(ExpandeCodigo(campo->text(), sesion().DigitosSubcuenta));
    DtaSubcuentas_.bind(sesion().rutaEmpresa(), "Select * from Subcuentas where subcuenta =" +
                                                    nombreEntreComillas(campo->text()));
    nombre->setText(DtaSubcuentas_.Fields("Descripcion").display());
    return true;
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kSinRegistroActivo && e.numero() != err::kLlamadaNoValida) throw;
    consultar("FrmVisualizaPlan", codigoAccion, campo->text());
    enfocar(campo);
    return false;
  }
}

// Two choices make six templates; without one of them there is none.
Listado FrmSubcuentasImpresos::listado() const {
  static const char* const kPlantillas[2][3] = {{"SubRed", "SubAmp", "SubSal"},
                                                {"SubCtaRed", "SubCtaAmp", "SubCtaSal"}};
  const int plan = opcion("OptPlan");
  const int tipo = opcion("OptOpciones");
  const QString plantilla =
      plan < 0 || tipo < 0 ? QString() : QString("Impresos\\%1.rpt").arg(kPlantillas[plan][tipo]);
  return {.titulo = "Listado de Subcuentas",
          .plantilla = plantilla,
          .seleccion =
              seleccionCodigos("SqlSubcuentas con saldo.Subcuenta", ui_->TxtSubcuentasDesde->text(),
                               ui_->TxtSubcuentasHasta->text())};
}
