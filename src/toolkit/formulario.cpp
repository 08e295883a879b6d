#include "toolkit/formulario.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QScopedValueRollback>

#include "common/errorejecucion.h"
#include "engine/datacontrol.h"
#include "toolkit/fallo.h"
#include "toolkit/formulario_p.h"
#include "toolkit/principal.h"
#include "toolkit/registro.h"
#include "toolkit/rejilla.h"
#include "toolkit/tema.h"

namespace {
constexpr int kErrorInterno = 51;

// The index behind the name of a control of an array: 3 of "OptPunteo_3"; -1 for another name.
int indiceDe(const QString& nombre, const QString& matriz) {
  if (!nombre.startsWith(matriz + QLatin1Char('_'))) return -1;
  bool entero = false;
  const int indice = nombre.mid(matriz.size() + 1).toInt(&entero);
  return entero ? indice : -1;
}
}  // namespace

Formulario::Formulario(Contexto& contexto)
    : QDialog(nullptr), ctx(contexto), p_(std::make_unique<Privado>(*this)) {
  icono({});  // so that the drawings named in the .ui files are there
  setSizeGripEnabled(true);
  connect(qApp, &QApplication::focusChanged, p_.get(),
          [this](QWidget*, QWidget* ahora) { p_->cambioDeFoco(ahora); });
}

Formulario::~Formulario() {
  p_->cerrado = true;
  if (ctx.formularios) ctx.formularios->olvidar(*this);
}

bool Formulario::cargar() {
  if (!p_->cargado) {
    p_->cargado = true;
    if (ctx.formularios) ctx.formularios->apuntar(*this);
    p_->vigilarHijos();
    p_->guardarSitioDeBarras();
    protege([this] { Form_Load(); }, QStringLiteral("Form_Load"));
  }
  return !p_->cerrado;
}

// A bar that appears with the work must not squeeze what stands around it.
void Formulario::Privado::guardarSitioDeBarras() {
  for (auto* barra : forma.findChildren<QProgressBar*>()) {
    QSizePolicy politica = barra->sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    barra->setSizePolicy(politica);
  }
}

// Of options that the form opens with, the one that is set: a key on another would set that.
void Formulario::Privado::enfocarLaElegida() {
  // Until a window is the active one, what has its focus may be still to come.
  const QWidget* entra = forma.focusWidget();
  for (QWidget* w = &forma; !entra && (w = w->nextInFocusChain()) != &forma;)
    if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(&forma) && w->isEnabled()) entra = w;
  const auto* primera = qobject_cast<const QRadioButton*>(entra);
  if (!primera || primera->isChecked()) return;
  const auto opciones = primera->parentWidget()->findChildren<QRadioButton*>();
  for (QRadioButton* opcion : opciones)
    if (opcion->isChecked()) opcion->setFocus();
}

void Formulario::setVisible(bool visible) {
  const bool aparece = visible && !isVisible();
  if (aparece && !cargar()) return;
  QDialog::setVisible(visible);
  if (aparece) p_->enfocarLaElegida();
  if (aparece) protege([this] { Form_Activate(); }, QStringLiteral("Form_Activate"));
}

void Formulario::showEvent(QShowEvent* evento) {
  p_->vigilarHijos();  // also those made while loading
  QDialog::showEvent(evento);
}

void Formulario::descargar() {
  done(0);
}

void Formulario::leeONoAbre(const std::function<void()>& lectura) {
  try {
    lectura();
  } catch (const ErrorEjecucion&) {
    descargar();
    throw;
  }
}

void Formulario::done(int resultado) {
  if (p_->cerrado) return;
  p_->cerrado = true;
  p_->foco.cierra();
  if (ctx.principal && ctx.principal->ventana() == this) ctx.principal = nullptr;
  QDialog::done(resultado);
  if (ctx.formularios) ctx.formularios->olvidar(*this);
}

void Formulario::retirar() {
  p_->retirada = true;
  if (p_->enCurso == 0) deleteLater();
}

void Formulario::setBotonDeCierre(QAbstractButton* boton) {
  p_->botonDeCierre = boton;
}

QAbstractButton* Formulario::Privado::cierre() const {
  if (botonDeCierre) return botonDeCierre;
  for (const char* nombre : {"CmdCancelar", "CmdSalir", "BtonCancelar"}) {
    if (auto* boton = forma.findChild<QAbstractButton*>(QLatin1String(nombre))) return boton;
  }
  return nullptr;
}

void Formulario::reject() {
  // While its reaction shows something, a second Escape must not run it again.
  if (p_->cerrado || p_->cerrando) return;
  auto* boton = p_->cierre();
  if (!boton) return descargar();
  const QPointer<Formulario> viva(this);
  p_->cerrando = true;
  boton->click();
  if (viva) p_->cerrando = false;
}

void Formulario::closeEvent(QCloseEvent* evento) {
  evento->ignore();
  const auto rejillas = findChildren<Rejilla*>();
  for (auto* rejilla : rejillas) {
    if (!rejilla->guardarFila()) return;
  }
  reject();
}

QString Formulario::Privado::lugar(const QObject* control, const char* evento) const {
  return control->objectName() + QLatin1Char('_') + QLatin1String(evento);
}

void Formulario::protege(const std::function<void()>& reaccion, const QString& lugar) {
  const Privado::EnCurso guarda(*p_);
  int numero = 0;
  QString texto;
  try {
    return reaccion();
  } catch (const ErrorEjecucion& e) {
    numero = e.numero();
    texto = e.descripcion();
  } catch (const std::exception& e) {
    numero = kErrorInterno;
    texto = QString::fromUtf8(e.what());
  }
  avisarError(numero, texto, lugar);
}

void Formulario::avisarError(int numero, const QString& texto, const QString& lugar) {
  const QString nombre = objectName();
  avisa(ctx, this,
        {numero, texto, lugar.isEmpty() ? nombre : lugar + QStringLiteral(" - ") + nombre});
}

void Formulario::anota(const ErrorEjecucion& error, const QString& lugar) {
  ::anota(ctx, {error, lugar});
}

void Formulario::protegeEn(const QWidget* control, const std::function<void()>& reaccion,
                           const QString& lugar) {
  for (auto* w = control; w; w = w->parentWidget()) {
    if (auto* forma = qobject_cast<const Formulario*>(w)) {
      return const_cast<Formulario*>(forma)->protege(reaccion, lugar);
    }
  }
  reaccion();
}

// --- wiring
// ---------------------------------------------------------------------------------------

void Formulario::alPulsar(QAbstractButton* boton, std::function<void()> reaccion) {
  p_->vigilar(boton);
  connect(boton, &QAbstractButton::clicked, p_.get(),
          [this, boton, r = std::move(reaccion)] { protege(r, p_->lugar(boton, "Click")); });
}

void Formulario::alCambiar(QWidget* campo, std::function<void()> reaccion) {
  auto cambio = [this, campo, r = std::move(reaccion)] {
    if (!p_->cerrado) protege(r, p_->lugar(campo, "Change"));
  };
  if (auto* texto = qobject_cast<QLineEdit*>(campo)) {
    connect(texto, &QLineEdit::textChanged, p_.get(), cambio);
  } else if (auto* combo = qobject_cast<QComboBox*>(campo)) {
    connect(combo, &QComboBox::currentTextChanged, p_.get(), cambio);
  } else if (auto* boton = qobject_cast<QAbstractButton*>(campo)) {
    connect(boton, &QAbstractButton::toggled, p_.get(), cambio);
  } else if (auto* largo = qobject_cast<QPlainTextEdit*>(campo)) {
    connect(largo, &QPlainTextEdit::textChanged, p_.get(), cambio);
  } else {
    qFatal("%s: a control of this kind tells no change", qPrintable(campo->objectName()));
  }
}

void Formulario::alElegir(QComboBox* combo, std::function<void(int)> reaccion) {
  connect(combo, &QComboBox::activated, p_.get(),
          [this, combo, r = std::move(reaccion)](int indice) {
            protege([&] { r(indice); }, p_->lugar(combo, "Click"));
          });
}

void Formulario::alEntrar(QWidget* campo, std::function<void()> reaccion) {
  p_->control(campo).entrar.push_back(std::move(reaccion));
}

void Formulario::alSalir(QWidget* campo, std::function<void()> reaccion) {
  p_->control(campo).salir.push_back(std::move(reaccion));
}

void Formulario::alTeclear(QWidget* campo, std::function<void(Tecla&)> reaccion) {
  p_->control(campo).teclear.push_back(std::move(reaccion));
}

void Formulario::alBajarTecla(QWidget* campo, std::function<bool(QKeyEvent&)> reaccion) {
  p_->control(campo).bajarTecla.push_back(std::move(reaccion));
}

void Formulario::alDobleClic(QWidget* campo, std::function<void()> reaccion) {
  if (auto* rejilla = qobject_cast<Rejilla*>(campo)) {
    connect(rejilla, &Rejilla::dobleClic, p_.get(), [this, rejilla, r = std::move(reaccion)] {
      protege(r, p_->lugar(rejilla, "DblClick"));
    });
  } else {
    p_->control(campo).dobleClic.push_back(std::move(reaccion));
  }
}

void Formulario::alRecolocar(DataControl& datos, std::function<void()> reaccion) {
  connect(&datos, &DataControl::repositioned, p_.get(), [this, &datos, r = std::move(reaccion)] {
    if (!p_->cerrado) protege(r, p_->lugar(&datos, "Reposition"));
  });
}

void Formulario::alElegirOpcion(const QString& matriz, std::function<void(int)> reaccion) {
  const auto botones = findChildren<QAbstractButton*>();
  for (auto* boton : botones) {
    const int indice = indiceDe(boton->objectName(), matriz);
    if (indice < 0) continue;
    p_->vigilar(boton);
    connect(boton, &QAbstractButton::toggled, p_.get(),
            [this, boton, indice, reaccion](bool puesta) {
              if (puesta) protege([&] { reaccion(indice); }, p_->lugar(boton, "Click"));
            });
  }
}

void Formulario::alPulsarMatriz(const QString& matriz, const std::function<void(int)>& reaccion) {
  const auto botones = findChildren<QAbstractButton*>();
  for (auto* boton : botones) {
    const int indice = indiceDe(boton->objectName(), matriz);
    if (indice >= 0) alPulsar(boton, [reaccion, indice] { reaccion(indice); });
  }
}

int Formulario::opcion(const QString& matriz) const {
  const auto botones = findChildren<QAbstractButton*>();
  for (const auto* boton : botones) {
    if (boton->isChecked() && indiceDe(boton->objectName(), matriz) >= 0) {
      return indiceDe(boton->objectName(), matriz);
    }
  }
  return -1;
}

void Formulario::setOpcion(const QString& matriz, int indice) {
  const QString nombre = matriz + QLatin1Char('_') + QString::number(indice);
  if (auto* boton = findChild<QAbstractButton*>(nombre)) boton->setChecked(true);
}

// --- showing
// --------------------------------------------------------------------------------------

void Formulario::mensaje(const QString& texto, const QString& titulo, Icono icono) {
  ctx.cajas->mensaje(this, texto, titulo, icono);
}

bool Formulario::pregunta(const QString& texto, const QString& titulo, Icono icono) {
  return ctx.cajas->pregunta(this, texto, titulo, icono);
}

bool Formulario::mostrar(const QString& nombre) {
  return ctx.formularios->mostrar(nombre);
}

bool Formulario::mostrar(const QString& nombre, int codigoLlamada, const QString& valorElegido) {
  // A dialog over a dialog must not take the lower one's code away from it.
  const QScopedValueRollback<int> codigo(sesion().CodigoLlamada, codigoLlamada);
  if (!valorElegido.isNull()) sesion().ValorElegido = valorElegido;
  const bool mostrado = mostrar(nombre);
  if (!valorElegido.isNull()) sesion().ValorElegido.clear();
  return mostrado;
}

bool Formulario::consultar(const QString& nombre, int codigoAccion, const QString& texto) {
  const QScopedValueRollback<int> codigo(sesion().CodigoAccion, codigoAccion);
  return mostrar(nombre, 0, texto.isNull() ? QStringLiteral("") : texto);
}
