#include "start/frmpresentacion.h"

#include <QPainter>

#include "common/version.h"
#include "toolkit/registro.h"
#include "ui_frmpresentacion.h"

FrmPresentacion::FrmPresentacion(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmPresentacion>()) {
  Q_INIT_RESOURCE(arranque);
  ui_->setupUi(this);
  dibujo_.load(QStringLiteral(":/arranque/presentacion.svg"));
  setSizeGripEnabled(false);
  setFixedSize(dibujo_.defaultSize());
  // The drawing has its own colours, so the words over it can't follow the desktop's palette.
  setStyleSheet(
      QStringLiteral("QLabel { color: #f4f1e8; } #LblTitulo { font-size: 34pt; font-weight: bold; }"
                     "QProgressBar { border: none; background: rgba(0,0,0,70); max-height: 6px; }"
                     "QProgressBar::chunk { background: #e0a33e; }"));

  TMR_.setParent(this);
  TMR_.setObjectName(QStringLiteral("TMR"));
  TMR_.setInterval(50);
  connect(&TMR_, &QTimer::timeout, this, [this] { protege([this] { TMR_Timer(); }); });
}

FrmPresentacion::~FrmPresentacion() = default;

void FrmPresentacion::Form_Load() {
  setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
}

void FrmPresentacion::Form_Activate() {
  if (ctx.copiaUnica && !ctx.copiaUnica()) {
    mensaje(QStringLiteral("Ya tiene un Librano ejecutandose en esta maquina"),
            QStringLiteral("Error"));
    ctx.terminar();
    return;
  }
  sesion().VersionPrograma = versionDelPrograma();
  ui_->LblVersion->setText(QStringLiteral("Versión ") + sesion().VersionPrograma);
  TMR_.start();
}

void FrmPresentacion::TMR_Timer() {
  ui_->Barra->setValue(ui_->Barra->value() + 1);
  if (ui_->Barra->value() < ui_->Barra->maximum()) return;
  TMR_.stop();
  ctx.formularios->cambiarA(QStringLiteral("FrmSeleccion"));
}

void FrmPresentacion::paintEvent(QPaintEvent*) {
  QPainter pintor(this);
  dibujo_.render(&pintor, rect());
}
