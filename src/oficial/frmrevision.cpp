#include "oficial/frmrevision.h"

#include <QLineEdit>
#include <QScopeGuard>

#include "common/comillas.h"
#include "common/formato.h"
#include "engine/dbengine.h"
#include "oficial/widgets/hojaimpresa.h"
#include "toolkit/principal.h"
#include "toolkit/protocolo.h"
#include "ui_frmrevision.h"

namespace {
const QString kTitulo = QStringLiteral("Lista de revisión");
const QString kPlantilla = QStringLiteral("Revision");
}  // namespace

FrmRevision::FrmRevision(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmRevision>()) {
  ui_->setupUi(this);
  sinIntro(ui_->GrdRevision);
  connect(ui_->GrdRevision, &TablaHoja::intro, this,
          [this] { protege([this] { CmdAbrir_Click(); }, "GrdRevision_KeyPress"); });
  alPulsar(ui_->CmdAbrir, [this] { CmdAbrir_Click(); });
  alPulsar(ui_->CmdRevisar, [this] { revisaTodo(); });
  alPulsar(ui_->CmdImprimir, [this] { CmdImprimir_Click(); });
  alPulsar(ui_->CmdExcel, [this] { CmdExcel_Click(); });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmRevision::~FrmRevision() = default;

void FrmRevision::Form_Load() {
  ui_->GrdRevision->enlazar(
      {{"Control", 24}, {"Dónde", 12}, {"Qué se ha encontrado", 70}},
      {.filas = [this] { return int(hallazgos_.size()); },
       .texto = [this](int fila, int columna) { return celda(fila, columna); }});
  revisaTodo();
  ui_->GrdRevision->setFocus();
}

void FrmRevision::revisaTodo() {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  hallazgos_ = revisa(*empresa, sesion().AnoActual, sesion().MascaraImporte);
  ui_->GrdRevision->refresca();
  ui_->CmdAbrir->setEnabled(!hallazgos_.isEmpty());
  ui_->LblResumen->setText(
      hallazgos_.isEmpty()
          ? QStringLiteral("No se ha encontrado nada en %1 controles.")
                .arg(controlesDeRevision().size())
          : QStringLiteral("Encontrado: %1. Intro abre aquello de lo que se habla.")
                .arg(hallazgos_.size()));
}

QString FrmRevision::celda(int fila, int columna) const {
  const Hallazgo& h = hallazgos_[fila];
  return columna == 0 ? h.control : columna == 1 ? h.donde() : h.texto;
}

void FrmRevision::CmdAbrir_Click() {
  const int fila = ui_->GrdRevision->fila();
  if (fila < 0 || fila >= hallazgos_.size()) return;
  abre(Hallazgo(hallazgos_[fila]));
  revisaTodo();
}

void FrmRevision::abre(const Hallazgo& h) {
  switch (h.sitio) {
    case Sitio::Declarante:
      return void(mostrar("FrmDeclarante"));
    case Sitio::Subcuenta:
      return void(mostrar("FrmSubCuentas", llamada::kModificacion, h.codigo));
    case Sitio::Extracto:
      return abreExtracto(h.codigo);
    case Sitio::Asiento:
      return void(mostrar("FrmAsiento", 0, QString::number(h.asiento)));
    case Sitio::Factura:
      return void(mostrar("FrmIVASR", llamada::kIVAModificacion, QString::number(h.asiento)));
    case Sitio::Registro:
      return void(mostrar("FrmDatosRegistros", 347, h.codigo));
  }
}

// An extract bears the name of the entry line's subcuenta.
void FrmRevision::abreExtracto(const QString& subcuenta) {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(sesion().rutaEmpresa());
  const auto fila = empresa->OpenRecordset("Select Descripcion from Subcuentas where Subcuenta=" +
                                           entreComillas(subcuenta));
  QLineEdit& nombre = ctx.principal->TxtNombreCuenta();
  const auto vuelve = qScopeGuard([&nombre, antes = nombre.text()] { nombre.setText(antes); });
  nombre.setText(fila->Eof() ? QString() : fila->Fields(0).display());
  mostrar("FrmExtractosPantalla", 0, subcuenta);
}

HojaImpresa FrmRevision::hoja() {
  HojaImpresa hoja(ctx, this);
  for (const Hallazgo& h : hallazgos_) hoja.anade({h.control, h.donde(), h.texto});
  if (hallazgos_.isEmpty()) hoja.anade({{}, {}, ui_->LblResumen->text()});
  return hoja;
}

void FrmRevision::CmdImprimir_Click() {
  hoja().muestra(kTitulo, kPlantilla, "Revisada el " + Format(ctx.reloj->hoy(), "dd/mm/yyyy"));
}

void FrmRevision::CmdExcel_Click() {
  const auto ruta =
      ctx.cajas->guardarFichero(this, kTitulo, "revision.xlsx", "Hoja de cálculo (*.xlsx)");
  if (!ruta || ruta->isEmpty()) return;
  hoja().guardaXlsx(*ruta, kPlantilla);
  mensaje("Hoja hecha", kTitulo);
}
