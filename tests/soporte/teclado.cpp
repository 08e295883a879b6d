#include "soporte/teclado.h"

#include "soporte/escenario.h"

namespace {
constexpr int kMitadDeMarca = 8;
constexpr int kControlesDeUnaForma = 100;
}  // namespace

void reposar() {
  // A queued call may queue another one: a few turns settle them.
  for (int vuelta = 0; vuelta < 4; ++vuelta) QCoreApplication::processEvents();
}

void activar(QWidget& ventana) {
  ventana.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&ventana)) << qPrintable(ventana.objectName());
  reposar();
}

QObject* Teclado::buscar(const char* nombre, const QMetaObject& clase) const {
  const auto hijos = forma_->findChildren<QObject*>(QString::fromUtf8(nombre));
  for (auto* hijo : hijos) {
    if (clase.cast(hijo)) return hijo;
  }
  // There is no going on without it: the test program tells which one and ends.
  qFatal("%s has no %s \"%s\"", qPrintable(forma_->objectName()), clase.className(), nombre);
}

void Teclado::tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores) {
  QTest::keyClick(forma_->windowHandle(), codigo, modificadores);
  reposar();
}

void Teclado::teclea(const QString& texto) {
  for (const QChar letra : texto) {
    if (!forma_ || !forma_->windowHandle()) return;
    const auto codigo = static_cast<Qt::Key>(letra.toUpper().unicode());
    QTest::sendKeyEvent(QTest::Click, forma_->windowHandle(), codigo, QString(letra),
                        Qt::NoModifier);
    reposar();
  }
}

void Teclado::mnemonico(QChar letra) {
  tecla(static_cast<Qt::Key>(letra.toUpper().unicode()), Qt::AltModifier);
}

void Teclado::llega(const char* campo) {
  const QString destino = QString::fromUtf8(campo);
  for (int i = 0; i < kControlesDeUnaForma && enfocado() != destino; ++i) tab();
  EXPECT_EQ(enfocado(), destino);
}

void Teclado::pulsa(const char* boton) {
  auto& control = this->control(boton);
  EXPECT_TRUE(control.isVisible() && control.isEnabled()) << boton;
  QPoint sitio = control.rect().center();
  if (qobject_cast<QCheckBox*>(&control) || qobject_cast<QRadioButton*>(&control)) {
    sitio.setX(control.rect().left() + kMitadDeMarca);  // they answer on their mark and text only
  }
  QTest::mouseClick(forma_->windowHandle(), Qt::LeftButton, {},
                    control.mapTo(forma_->window(), sitio));
  reposar();
}

void Teclado::dobleClic(const char* campo) {
  auto& control = this->control(campo);
  QTest::mouseDClick(forma_->windowHandle(), Qt::LeftButton, {},
                     control.mapTo(forma_->window(), control.rect().center()));
  reposar();
}

void Teclado::enfoca(const char* campo) {
  auto& control = this->control(campo);
  EXPECT_TRUE(control.isVisible() && control.isEnabled()) << campo;
  control.setFocus(Qt::TabFocusReason);
  reposar();
}

void Teclado::escribe(const char* campo, const QString& texto) {
  enfoca(campo);
  auto& control = this->control(campo);
  auto* linea = qobject_cast<QLineEdit*>(&control);
  if (auto* combo = qobject_cast<QComboBox*>(&control)) linea = combo->lineEdit();
  ASSERT_TRUE(linea) << campo;
  linea->selectAll();
  teclea(texto);
}

void Teclado::elige(const char* combo, const QString& texto) {
  auto& control = this->control<QComboBox>(combo);
  const int indice = control.findText(texto);
  ASSERT_GE(indice, 0) << combo << ": " << qPrintable(texto);
  enfoca(combo);
  control.setCurrentIndex(indice);
  Q_EMIT control.activated(indice);
  reposar();
}

void Teclado::marca(const char* casilla, bool si) {
  if (control<QAbstractButton>(casilla).isChecked() != si) pulsa(casilla);
  EXPECT_EQ(control<QAbstractButton>(casilla).isChecked(), si) << casilla;
}

void Teclado::cierra() {
  forma_->close();
  reposar();
}

void Teclado::suelta(const char* campo, const QString& texto) {
  QMimeData contenido;
  contenido.setText(texto);
  contenido.setData(QLatin1String(Rejilla::kTipoArrastre), {});
  auto& control = this->control(campo);
  const QPoint sitio = control.rect().center();
  QDragEnterEvent entrada(sitio, Qt::CopyAction, &contenido, Qt::LeftButton, Qt::NoModifier);
  entrada.ignore();
  QCoreApplication::sendEvent(&control, &entrada);
  EXPECT_TRUE(entrada.isAccepted()) << campo;
  QDropEvent caida(sitio, Qt::CopyAction, &contenido, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&control, &caida);
  reposar();
}

QString Teclado::textoDe(const char* campo) const {
  for (const char* propiedad : {"currentText", "text"}) {
    const QVariant texto = control(campo).property(propiedad);
    if (texto.isValid()) return texto.toString();
  }
  ADD_FAILURE() << campo << " no tiene texto";
  return {};
}

QStringList Teclado::textosDe(std::initializer_list<const char*> campos) const {
  QStringList textos;
  for (const char* campo : campos) textos << textoDe(campo);
  return textos;
}

QString Teclado::enfocado() const {
  for (auto* w = forma_->focusWidget(); w; w = w->parentWidget()) {
    if (!w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_")))
      return w->objectName();
  }
  return {};
}

LetraAumentada::LetraAumentada(double veces) : antes_(QApplication::font()) {
  QFont letra = antes_;
  letra.setPointSizeF(antes_.pointSizeF() * veces);
  QApplication::setFont(letra);
}

LetraAumentada::~LetraAumentada() {
  QApplication::setFont(antes_);
}
