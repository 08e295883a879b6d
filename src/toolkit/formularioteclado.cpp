// The keyboard of every form: what Enter, number filters and the focus do in its controls.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QShortcutEvent>
#include <QTabBar>

#include "common/formato.h"
#include "common/funciones.h"
#include "toolkit/decimales.h"
#include "toolkit/formulario_p.h"
#include "toolkit/rejilla.h"

bool Tecla::esIntro() const {
  return codigo == Qt::Key_Return || codigo == Qt::Key_Enter;
}
bool Tecla::esRetroceso() const {
  return codigo == Qt::Key_Backspace;
}

namespace {
// Keys that reach a field as characters: printable ones, Enter, Backspace and Escape.
bool escribe(const QKeyEvent& evento) {
  switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Escape:
      return true;
    default:
      break;
  }
  const auto modificadores =
      evento.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  const bool orden = modificadores && modificadores != (Qt::ControlModifier | Qt::AltModifier);
  return !orden && evento.text().size() == 1 && evento.text().at(0).isPrint();
}
}  // namespace

QWidget* Formulario::Privado::controlDe(QWidget* parte) {
  QWidget* control = parte;
  for (auto* w = parte; w && !qobject_cast<Formulario*>(w); w = w->parentWidget()) {
    if (qobject_cast<QComboBox*>(w) || qobject_cast<QAbstractSpinBox*>(w) ||
        qobject_cast<QCalendarWidget*>(w) || qobject_cast<QAbstractItemView*>(w)) {
      control = w;
    }
  }
  return control;
}

Formulario::Privado::Control& Formulario::Privado::control(QWidget* campo) {
  vigilar(campo);
  return controles[campo];
}

void Formulario::Privado::vigilar(QWidget* campo) {
  if (vigilados.contains(campo)) return;
  vigilados.insert(campo);
  campo->installEventFilter(&forma);
  if (auto* vista = qobject_cast<QAbstractItemView*>(campo)) {
    vista->viewport()->installEventFilter(&forma);
  }
  // The mouse in the field of a combo; its keys come through the combo.
  if (auto* combo = qobject_cast<QComboBox*>(campo); combo && combo->lineEdit()) {
    combo->lineEdit()->installEventFilter(&forma);
  }
  if (auto* rejilla = qobject_cast<Rejilla*>(campo)) {
    connect(rejilla, &Rejilla::editorAbierto, this,
            [this](QWidget* editor) { editor->installEventFilter(&forma); });
  }
  if (auto* boton = qobject_cast<QAbstractButton*>(campo)) {
    // A button takes the focus when clicked, so that the field left reacts before it.
    if (boton->focusPolicy() == Qt::TabFocus) boton->setFocusPolicy(Qt::StrongFocus);
    if (auto* pulsador = qobject_cast<QPushButton*>(boton)) pulsador->setAutoDefault(false);
  }
  connect(campo, &QObject::destroyed, this, [this](QObject* objeto) {
    vigilados.remove(objeto);
    controles.remove(static_cast<QWidget*>(objeto));
  });
}

void Formulario::Privado::vigilarHijos() {
  const auto hijos = forma.findChildren<QWidget*>();
  for (auto* hijo : hijos) {
    if (hijo->window() != &forma || controlDe(hijo) != hijo) continue;
    if (hijo->focusPolicy() != Qt::NoFocus) vigilar(hijo);
  }
}

// --- what a field is
// ------------------------------------------------------------------------------

void Formulario::soloNumero(QLineEdit* campo) {
  p_->ponFiltro(campo, Filtro::Digitos, false);
}

void Formulario::soloCodigo(QLineEdit* campo) {
  p_->ponFiltro(campo, Filtro::Codigo, false);
}

void Formulario::numeroConSigno(QLineEdit* campo) {
  p_->ponFiltro(campo, Filtro::Importe, false);
}

void Formulario::importe(QLineEdit* campo) {
  p_->ponFiltro(campo, Filtro::Importe, true);
  teclaDecimal(campo);
}

void Formulario::importeSinSigno(QLineEdit* campo) {
  p_->ponFiltro(campo, Filtro::ImporteSinSigno, true);
  teclaDecimal(campo);
}

void Formulario::teclaDecimal(QWidget* campo) {
  p_->control(campo).decimal = true;
}
void Formulario::sinSeleccion(QLineEdit* campo) {
  p_->control(campo).sinSeleccion = true;
}
void Formulario::sinIntro(QWidget* campo) {
  p_->control(campo).sinIntro = true;
}

void Formulario::fecha(QLineEdit* campo) {
  alSalir(campo, [this, campo] {
    campo->setText(NormalizaFecha(campo->text(), sesion().AnoActual, ctx.reloj->hoy()));
  });
}

void Formulario::pitido() {
  ++p_->pitidos;
  QApplication::beep();
}

int Formulario::pitidos() const {
  return p_->pitidos;
}

// --- focus
// ----------------------------------------------------------------------------------------

void Formulario::Privado::cambioDeFoco(QWidget* ahora) {
  if (cerrado || !ahora || qobject_cast<QMenuBar*>(ahora)) return;
  QWidget* nuevo = controlDe(ahora);
  if (nuevo == &forma || nuevo == foco.actual() || nuevo->window() != &forma) return;
  const bool conRaton = QGuiApplication::mouseButtons() != Qt::NoButton;
  const QPointer<Formulario> viva(&forma);
  const bool entrado = foco.llega(nuevo);
  if (!viva || cerrado || !conRaton) return;
  // The button has been released under a box, or the control isn't the one to press any more.
  if (!entrado || QGuiApplication::mouseButtons() == Qt::NoButton) pulsacionVacia = nuevo;
}

void Formulario::Privado::salirDe(QWidget* campo) {
  const auto reacciones = controles.value(campo).salir;
  const QPointer<Formulario> viva(&forma);
  for (const auto& reaccion : reacciones) {
    if (!viva || cerrado) return;
    forma.protege(reaccion, lugar(campo, "LostFocus"));
  }
}

void Formulario::Privado::entrarEn(QWidget* campo) {
  const Control control = controles.value(campo);
  if (!control.sinSeleccion) {
    seleccionar(campo);
    // The click that brings the focus would undo the selection.
    if (QGuiApplication::mouseButtons() != Qt::NoButton) reseleccionar = campo;
  }
  const QPointer<Formulario> viva(&forma);
  for (const auto& reaccion : control.entrar) {
    if (!viva || cerrado) return;
    forma.protege(reaccion, lugar(campo, "GotFocus"));
  }
}

void Formulario::Privado::seleccionar(QWidget* campo) const {
  if (auto* texto = qobject_cast<QLineEdit*>(campo)) {
    texto->selectAll();
  } else if (auto* combo = qobject_cast<QComboBox*>(campo)) {
    if (combo->lineEdit()) combo->lineEdit()->selectAll();
  } else if (auto* cifra = qobject_cast<QAbstractSpinBox*>(campo)) {
    cifra->selectAll();
  }
}

void Formulario::enfocar(QWidget* campo) {
  if (p_->foco.actual() != campo && !p_->cerrado) {
    if (campo->isEnabled()) p_->foco.suelta();
    campo->setFocus(Qt::OtherFocusReason);
    // Without an active window Qt tells the move only later: by then it is done with.
    if (p_->foco.estado() == Foco::Estado::Fuera && focusWidget() == campo) p_->foco.llega(campo);
  } else {
    campo->setFocus(Qt::OtherFocusReason);
  }
  if (!p_->controles.value(campo).sinSeleccion) p_->seleccionar(campo);
}

// --- keys
// -----------------------------------------------------------------------------------------

bool Formulario::Privado::introComoTab(QWidget* campo) const {
  return qobject_cast<QLineEdit*>(campo) || qobject_cast<QComboBox*>(campo) ||
         qobject_cast<QAbstractSpinBox*>(campo) || qobject_cast<QCheckBox*>(campo) ||
         qobject_cast<QRadioButton*>(campo);
}

QString Formulario::Privado::mascara(const Control& control) const {
  return control.conMascara ? forma.ctx.sesion.MascaraImporte : QString();
}

void Formulario::Privado::ponFiltro(QLineEdit* campo, Filtro filtro, bool conMascara) {
  Control& suyo = control(campo);
  suyo.filtro = filtro;
  suyo.conMascara = conMascara;
  connect(campo, &QLineEdit::textChanged, this, [this, campo](const QString& texto) {
    controles[campo].anterior = texto;
    if (const QString suya = mascara(controles[campo]); !suya.isEmpty())
      campo->setTextMargins(0, 0, margenDecimal(texto, suya, campo->fontMetrics()), 0);
  });
  // What comes by another way than a key: the clipboard, a drop. It comes after the key's filter
  // and before textChanged. Taking something away is always allowed.
  connect(campo, &QLineEdit::textEdited, this, [this, campo](const QString& texto) {
    const Control& suyo = controles[campo];
    if (soloQuita(suyo.anterior, texto) || admite(suyo.filtro, texto, mascara(suyo))) return;
    const QString limpio = texto.trimmed();
    const bool vale = admite(suyo.filtro, limpio, mascara(suyo));
    campo->setText(vale ? limpio : suyo.anterior);
    if (!vale) forma.pitido();
  });
}

// True if the key goes through, turned into the decimal sign where it stands for it.
bool Formulario::Privado::filtrar(QWidget* campo, const Control& control, Tecla& tecla) {
  if (tecla.esIntro() || tecla.esRetroceso() || !tecla.texto.isPrint()) return true;
  const Sesion& sesion = forma.ctx.sesion;
  if (control.decimal && !sesion.DecimalOrigen.isEmpty() && !sesion.DecimalDestino.isEmpty() &&
      tecla.texto == sesion.DecimalOrigen.at(0)) {
    tecla.texto = sesion.DecimalDestino.at(0);
  }
  auto* linea = qobject_cast<QLineEdit*>(campo);
  if (!linea || control.filtro == Filtro::Ninguno) return true;
  const Edicion antes{linea->text(), linea->cursorPosition(), linea->selectionStart(),
                      linea->selectionLength()};
  const auto vale = [&](const Edicion& edicion) {
    return !tecla.texto.isSpace() &&
           admite(control.filtro, textoTras(edicion, tecla.texto), mascara(control));
  };
  if (vale(antes)) return true;
  // Behind the last figure the mask may have left a blank that nobody sees.
  const QString visto = antes.texto.trimmed();
  if (antes.largo == 0 && antes.cursor > visto.size() && vale({visto, visto.size()})) {
    linea->setText(visto);
    return true;
  }
  forma.pitido();
  return false;
}

bool Formulario::Privado::teclaPulsada(QWidget* campo, QObject* destino, QKeyEvent& evento) {
  Control control = controles.value(campo);
  if (destino != campo && qobject_cast<QLineEdit*>(destino)) {
    // The cell being edited in a grid: the grid's own reactions are for its rows.
    control.bajarTecla.clear();
    control.teclear.clear();
  }
  const QPointer<Formulario> viva(&forma);
  for (const auto& reaccion : control.bajarTecla) {
    bool tratada = false;
    forma.protege([&] { tratada = reaccion(evento); }, lugar(campo, "KeyDown"));
    if (tratada || !viva || cerrado) return true;
  }
  if (!escribe(evento)) return false;

  Tecla tecla;
  tecla.codigo = evento.key();
  if (!evento.text().isEmpty()) tecla.texto = evento.text().at(0);
  const QChar escrita = tecla.texto;
  for (const auto& reaccion : control.teclear) {
    forma.protege([&] { reaccion(tecla); }, lugar(campo, "KeyPress"));
    if (tecla.tragada || !viva || cerrado) return true;
  }
  if (tecla.esIntro() && !control.sinIntro && introComoTab(campo)) {
    forma.focusNextPrevChild(true);
    return true;
  }
  if (!filtrar(campo, control, tecla)) return true;
  if (tecla.texto == escrita) return false;
  QKeyEvent cambiada(QEvent::KeyPress, tecla.texto.toUpper().unicode(), evento.modifiers(),
                     QString(tecla.texto), evento.isAutoRepeat());
  const QScopedValueRollback<bool> guarda(reenviando, true);
  QCoreApplication::sendEvent(destino, &cambiada);
  return true;
}

void Formulario::keyPressEvent(QKeyEvent* evento) {
  if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter) {
    // No button answers to Enter unless it has the focus.
    auto* boton = qobject_cast<QAbstractButton*>(focusWidget());
    if (boton && !qobject_cast<QCheckBox*>(boton) && !qobject_cast<QRadioButton*>(boton)) {
      boton->click();
    }
    evento->accept();
    return;
  }
  QDialog::keyPressEvent(evento);
}

// --- mouse
// ----------------------------------------------------------------------------------------

bool Formulario::Privado::eventoDeRaton(QWidget* campo, QEvent& evento) {
  switch (evento.type()) {
    case QEvent::MouseButtonPress:
      if (pulsacionVacia == campo) {
        // A leaving reaction refused to let go, or showed a box under which the button was
        // released: the press alone would leave the control held down.
        pulsacionVacia.clear();
        return true;
      }
      return false;
    case QEvent::MouseButtonRelease:
      if (reseleccionar == campo) {
        auto* linea = qobject_cast<QLineEdit*>(campo);
        if (auto* combo = qobject_cast<QComboBox*>(campo)) linea = combo->lineEdit();
        if (linea && !linea->hasSelectedText()) linea->selectAll();
        reseleccionar.clear();
      }
      return false;
    case QEvent::MouseButtonDblClick: {
      const auto reacciones = controles.value(campo).dobleClic;
      for (const auto& reaccion : reacciones) forma.protege(reaccion, lugar(campo, "DblClick"));
      return !reacciones.empty();
    }
    default:
      return false;
  }
}

void Formulario::aceptaArrastre(QWidget* destino, std::function<void(const QString&)> reaccion) {
  if (!reaccion) {
    reaccion = [destino](const QString& texto) {
      if (auto* linea = qobject_cast<QLineEdit*>(destino)) linea->setText(texto);
      if (auto* combo = qobject_cast<QComboBox*>(destino)) combo->setEditText(texto);
    };
  }
  destino->setAcceptDrops(true);
  p_->control(destino).soltar = std::move(reaccion);
  // The field inside a combo would take the drop for itself and insert it.
  if (auto* combo = qobject_cast<QComboBox*>(destino); combo && combo->lineEdit()) {
    combo->lineEdit()->setAcceptDrops(false);
  }
}

bool Formulario::Privado::eventoDeArrastre(QWidget* campo, QEvent& evento) {
  const auto soltar = controles.value(campo).soltar;
  auto& arrastre = static_cast<QDropEvent&>(evento);
  if (!soltar || !arrastre.mimeData()->hasFormat(QLatin1String(Rejilla::kTipoArrastre))) {
    return false;
  }
  arrastre.acceptProposedAction();
  if (evento.type() == QEvent::Drop) {
    const QString texto = arrastre.mimeData()->text();
    forma.protege([&] { soltar(texto); }, lugar(campo, "DragDrop"));
  }
  return true;
}

bool Formulario::eventFilter(QObject* objeto, QEvent* evento) {
  auto* parte = qobject_cast<QWidget*>(objeto);
  if (!parte || p_->cerrado || p_->reenviando) return QDialog::eventFilter(objeto, evento);
  QWidget* campo = Privado::controlDe(parte);
  switch (evento->type()) {
    case QEvent::Wheel:
      // It would change what nobody is looking at: a closed list never, a figure only with the
      // focus; nor does it turn pages. What lies around the control may scroll.
      if (qobject_cast<QComboBox*>(campo) || qobject_cast<QTabBar*>(parte) ||
          (qobject_cast<QAbstractSpinBox*>(campo) && !campo->hasFocus())) {
        evento->ignore();
        return true;
      }
      break;
    case QEvent::KeyPress:
      if (parte != campo && qobject_cast<QComboBox*>(campo)) break;
      return p_->teclaPulsada(campo, objeto, static_cast<QKeyEvent&>(*evento));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
      return p_->eventoDeRaton(campo, *evento);
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return p_->eventoDeArrastre(campo, *evento);
    case QEvent::Shortcut:
      if (auto* boton = qobject_cast<QAbstractButton*>(objeto);
          boton && !static_cast<QShortcutEvent*>(evento)->isAmbiguous()) {
        boton->setFocus(Qt::ShortcutFocusReason);
        // A field that refuses to be left keeps the focus, and the click doesn't happen.
        if (!p_->cerrado && boton->isEnabled() && focusWidget() == boton) boton->click();
        return true;
      }
      break;
    default:
      break;
  }
  return QDialog::eventFilter(objeto, evento);
}
