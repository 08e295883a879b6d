#include "journal/frmcalendario.h"

#include <QLineEdit>

#include "common/formato.h"
#include "toolkit/consulta.h"
#include "toolkit/protocolo.h"
#include "ui_frmcalendario.h"

namespace {

constexpr DestinoConsulta kDestinos[] = {
    {llamada::kFechaDelDiario, "FrmMenu", "TxtFecha"},
    {llamada::kFechaDeBusqueda, "FrmBusFec", "TxtFecha"},
    {llamada::kFechaDePartida, "FrmPartida", "TxtFecha"},
};

}  // namespace

FrmCalendario::FrmCalendario(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCalendario>()) {
  ui_->setupUi(this);
  ui_->Calendario->setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
  ui_->Calendario->setFirstDayOfWeek(Qt::Monday);
  // The arrows choose a day as a click does.
  connect(ui_->Calendario, &QCalendarWidget::selectionChanged, this,
          [this] { protege([this] { escribe(ui_->Calendario->selectedDate()); }); });
  connect(ui_->Calendario, &QCalendarWidget::clicked, this,
          [this](QDate dia) { protege([&] { escribe(dia); }); });
  connect(ui_->Calendario, &QCalendarWidget::activated, this, [this](QDate dia) {
    protege([&] {
      escribe(dia);
      descargar();
    });
  });
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmCalendario::~FrmCalendario() = default;

void FrmCalendario::Form_Load() {
  const QLineEdit* campo = destino();
  const QString texto = campo ? campo->text() : QString();
  const QSignalBlocker sinElegir(ui_->Calendario);
  ui_->Calendario->setSelectedDate(EsFecha(texto) ? Variant(texto).date() : ctx.reloj->hoy());
}

QLineEdit* FrmCalendario::destino() const {
  return qobject_cast<QLineEdit*>(campoDestino(ctx, kDestinos, ctx.sesion.CodigoLlamada));
}

void FrmCalendario::escribe(QDate dia) {
  if (QLineEdit* campo = destino()) campo->setText(Format(dia, "dd/mm/yyyy"));
}
