#include "reports/frmsubcuentasimpresos.h"

#include "journal/widgets/camposubcuenta.h"
#include "toolkit/protocolo.h"
#include "ui_frmsubcuentasimpresos.h"

FrmSubcuentasImpresos::FrmSubcuentasImpresos(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmSubcuentasImpresos>()) {
  ui_->setupUi(this);
  desde_ =
      std::make_unique<CampoSubcuenta>(*this, ctx,
                                       CampoSubcuenta::Opciones{.codigo = *ui_->TxtSubcuentasDesde,
                                                                .nombre = *ui_->LblDesde,
                                                                .accion = accion::kListadoDesde});
  hasta_ =
      std::make_unique<CampoSubcuenta>(*this, ctx,
                                       CampoSubcuenta::Opciones{.codigo = *ui_->TxtSubcuentasHasta,
                                                                .nombre = *ui_->LblHasta,
                                                                .accion = accion::kListadoHasta});
  sinIntro(ui_->TxtSubcuentasDesde);
  alTeclear(ui_->TxtSubcuentasDesde, [this](Tecla& t) { TxtSubcuentasDesde_KeyPress(t); });
  hasta_->conecta();
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmSubcuentasImpresos::~FrmSubcuentasImpresos() = default;

void FrmSubcuentasImpresos::Form_Load() {
  desde_->ajustaDigitos();
  hasta_->ajustaDigitos();
}

void FrmSubcuentasImpresos::TxtSubcuentasDesde_KeyPress(Tecla& tecla) {
  if (!tecla.esIntro()) return;
  tecla.tragar();
  if (desde_->deja()) enfocar(ui_->TxtSubcuentasHasta);
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
