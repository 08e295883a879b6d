#include "toolkit/espera.h"

#include <QApplication>
#include <QLabel>

#include "engine/dbengine.h"
#include "toolkit/sinentrada.h"

namespace {

constexpr qint64 kSeNota = 500;  // milliseconds: shorter waits need no word
constexpr qint64 kPeriodo = 30;
constexpr int kAire = 12;

QWidget* ventanaALaVista() {
  if (QWidget* activa = QApplication::activeWindow()) return activa;
  const auto ventanas = QApplication::topLevelWidgets();
  const auto vista = std::find_if(ventanas.begin(), ventanas.end(),
                                  [](const QWidget* w) { return w->isVisible(); });
  return vista == ventanas.end() ? nullptr : *vista;
}

// A strip in the middle of the window, which goes away with the wait.
std::unique_ptr<QLabel> letreroEn(QWidget& ventana) {
  auto letrero = std::make_unique<QLabel>(&ventana);
  letrero->setObjectName(QStringLiteral("LblEspera"));
  letrero->setAutoFillBackground(true);
  letrero->setBackgroundRole(QPalette::ToolTipBase);
  letrero->setForegroundRole(QPalette::ToolTipText);
  letrero->setFrameShape(QFrame::Box);
  letrero->setMargin(kAire / 2);
  letrero->setAlignment(Qt::AlignCenter);
  letrero->setAttribute(Qt::WA_TransparentForMouseEvents);
  return letrero;
}

void ensena(QLabel& letrero, const QString& texto) {
  const QWidget& ventana = *letrero.parentWidget();
  letrero.setText(texto);
  letrero.adjustSize();
  letrero.move((ventana.width() - letrero.width()) / 2, (ventana.height() - letrero.height()) / 2);
  letrero.show();
}

}  // namespace

Espera::Espera(DBEngine& motor) : motor_(motor) {
  motor_.setWait(this);
}

Espera::~Espera() {
  motor_.setWait(nullptr);
}

bool Espera::waiting(qint64 elapsed) {
  return elapsed < kSeNota || sigue(QStringLiteral("Esperando a otro puesto...  (Escape lo deja)"));
}

bool Espera::working(Work work, qint64) {
  switch (work) {
    case Work::Copying:
      return sigue(QStringLiteral("Copiando los datos...  (Escape lo deja)"));
    case Work::Repairing:
      return sigue(QStringLiteral("Revisando los datos..."));
    case Work::Indexing:
      return sigue(QStringLiteral("Ordenando los datos..."));
    case Work::Reading:
      break;
  }
  return sigue(QStringLiteral("Buscando en los datos...  (Escape lo deja)"));
}

bool Espera::sigue(const QString& texto) {
  if (guardia_ && atendido_.elapsed() < kPeriodo) return !guardia_->escape();
  if (!guardia_) {
    guardia_ = std::make_unique<SinEntrada>();
    if (QWidget* ventana = ventanaALaVista()) letrero_ = letreroEn(*ventana);
  }
  if (letrero_ && letrero_->text() != texto) ensena(*letrero_, texto);
  QApplication::processEvents();
  atendido_.start();
  return !guardia_->escape();
}

void Espera::over() {
  letrero_.reset();
  guardia_.reset();
}
