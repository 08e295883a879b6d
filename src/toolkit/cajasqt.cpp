#include "toolkit/cajasqt.h"

#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include "engine/dbengine.h"

namespace {
QMessageBox::Icon iconoDe(Icono icono) {
  switch (icono) {
    case Icono::Aviso:
      return QMessageBox::Warning;
    case Icono::Alto:
      return QMessageBox::Critical;
    case Icono::Pregunta:
      return QMessageBox::Question;
    case Icono::Informacion:
      return QMessageBox::Information;
    case Icono::Ninguno:
      break;
  }
  return QMessageBox::NoIcon;
}

// Texts are shown as they are: a name typed with "<" is no markup.
void preparar(QMessageBox& caja, const QString& texto, const QString& titulo, Icono icono) {
  caja.setTextFormat(Qt::PlainText);
  caja.setIcon(iconoDe(icono));
  caja.setWindowTitle(titulo);
  caja.setText(texto);
}
}  // namespace

CajasQt::CajasQt(DBEngine& motor)
    : Cajas(motor), carpeta_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {}

void CajasQt::ensenaMensaje(QWidget* padre, const QString& texto, const QString& titulo,
                            Icono icono) {
  QMessageBox caja(padre);
  preparar(caja, texto, titulo, icono);
  caja.addButton(QStringLiteral("Aceptar"), QMessageBox::AcceptRole);
  caja.exec();
}

bool CajasQt::ensenaPregunta(QWidget* padre, const QString& texto, const QString& titulo,
                             Icono icono) {
  QMessageBox caja(padre);
  preparar(caja, texto, titulo, icono == Icono::Ninguno ? Icono::Pregunta : icono);
  auto* si = caja.addButton(QStringLiteral("&Sí"), QMessageBox::YesRole);
  auto* no = caja.addButton(QStringLiteral("&No"), QMessageBox::NoRole);
  caja.setDefaultButton(si);
  caja.setEscapeButton(no);
  caja.exec();
  return caja.clickedButton() == si;
}

std::optional<QString> CajasQt::ensenaEntrada(QWidget* padre, const QString& texto,
                                              const QString& titulo, const QString& inicial) {
  QInputDialog caja(padre);
  caja.setWindowTitle(titulo);
  caja.setLabelText(texto);
  caja.setTextValue(inicial);
  caja.setOkButtonText(QStringLiteral("Aceptar"));
  caja.setCancelButtonText(QStringLiteral("Cancelar"));
  if (caja.exec() != QDialog::Accepted) return std::nullopt;
  return caja.textValue();
}

std::optional<QString> CajasQt::ensenaAbrir(QWidget* padre, const QString& titulo,
                                            const QString& carpeta, const QString& filtro) {
  const QString fichero = QFileDialog::getOpenFileName(padre, titulo, carpeta, filtro);
  return fichero.isEmpty() ? std::nullopt : std::optional(fichero);
}

std::optional<QString> CajasQt::ensenaGuardar(QWidget* padre, const QString& titulo,
                                              const QString& propuesto, const QString& filtro) {
  QFileDialog caja(padre, titulo, QDir(carpeta_).filePath(propuesto), filtro);
  caja.setAcceptMode(QFileDialog::AcceptSave);
  // A name typed without it gets it before the user is asked whether that file may go.
  caja.setDefaultSuffix(QFileInfo(propuesto).suffix());
  if (caja.exec() != QDialog::Accepted) return std::nullopt;
  const QString fichero = caja.selectedFiles().constFirst();
  carpeta_ = QFileInfo(fichero).path();
  return fichero;
}

void CajasQt::ensenaModal(QDialog& dialogo) {
  dialogo.setWindowModality(Qt::ApplicationModal);
  QEventLoop bucle;
  QObject::connect(&dialogo, &QDialog::finished, &bucle, &QEventLoop::quit);
  QObject::connect(&dialogo, &QObject::destroyed, &bucle, &QEventLoop::quit);
  dialogo.show();
  // A dialog may close itself while it comes up.
  if (dialogo.isVisible()) bucle.exec(QEventLoop::DialogExec);
}

Cajas::Eleccion CajasQt::ensenaEleccion(QWidget* padre, const QString& texto) {
  QMessageBox caja(padre);
  preparar(caja, texto, QStringLiteral("No se ha podido guardar"), Icono::Aviso);
  auto* otraVez = caja.addButton(QStringLiteral("&Reintentar"), QMessageBox::AcceptRole);
  auto* descartar = caja.addButton(QStringLiteral("&Descartar"), QMessageBox::DestructiveRole);
  caja.setDefaultButton(otraVez);
  caja.setEscapeButton(otraVez);  // nothing is given up without saying so
  for (const auto senal : {&DBEngine::saved, &DBEngine::undone})
    QObject::connect(&motor(), senal, &caja, [&] {
      if (!motor().pending()) caja.accept();
    });
  caja.exec();
  return caja.clickedButton() == descartar ? Eleccion::Descartar : Eleccion::Reintentar;
}
