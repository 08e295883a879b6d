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

}  // namespace

Espera::Espera(DBEngine& motor) : motor_(motor) {
  motor_.setWait(this);
}

Espera::~Espera() {
  motor_.setWait(nullptr);
}

bool Espera::waiting(qint64 elapsed) {
  return elapsed < kSeNota || sigue("Esperando a otro puesto...");
}

bool Espera::working(qint64) {
  return sigue("Buscando en los datos...");
}

bool Espera::sigue(const char* texto) {
  if (guardia_ && atendido_.elapsed() < kPeriodo) return !guardia_->escape();
  if (!guardia_) {
    guardia_ = std::make_unique<SinEntrada>();
    if (QWidget* ventana = ventanaALaVista()) {
      letrero_ = letreroEn(*ventana);
      letrero_->setText(QString::fromUtf8(texto) + QStringLiteral("  (Escape lo deja)"));
      letrero_->adjustSize();
      letrero_->move((ventana->width() - letrero_->width()) / 2,
                     (ventana->height() - letrero_->height()) / 2);
      letrero_->show();
    }
  }
  QApplication::processEvents();
  atendido_.start();
  return !guardia_->escape();
}

void Espera::over() {
  letrero_.reset();
  guardia_.reset();
}
