#include "iva/frmivasrlibros.h"

#include "ui_frmivasrlibros.h"

namespace {
// By the index of OptLibro: both registers are all letters above "A".
constexpr const char* kRegistro[] = {"='S", "='R", "> 'A"};
}  // namespace

FrmIVASRLibros::FrmIVASRLibros(Contexto& contexto)
    : FrmListado(contexto), ui_(std::make_unique<Ui::FrmIVASRLibros>()) {
  ui_->setupUi(this);
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmIVASRLibros::~FrmIVASRLibros() = default;

void FrmIVASRLibros::Form_Load() {
  ponMeses(ui_->TxtDesde, ui_->TxtHasta);
}

// Kept: the window is titled as the accumulators are; both are found under one name on the bar of
// open windows.
Listado FrmIVASRLibros::listado() const {
  Listado l = listadoMensual("Acumulados de IVA", "IVALibro", "@Mes", ui_->TxtDesde->currentText(),
                             ui_->TxtHasta->currentText());
  l.seleccion = QStringLiteral("{SqlIva.TipoSR}") + QLatin1String(kRegistro[opcion("OptLibro")]) +
                QStringLiteral("' and ") + l.seleccion;
  return l;
}
