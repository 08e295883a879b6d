// The one seam through which boxes, questions, inputs, file pickers and modal dialogs are shown.
//
// The program shows Qt's, with Spanish buttons; tests play a script. Every member writes what is
// pending in the files before it shows anything, so what the user reads is already safe.
#pragma once

#include <optional>
#include <QString>
#include <QStringList>

class QWidget;
class QDialog;

enum class Icono { Ninguno, Aviso, Alto, Pregunta, Informacion };

class Cajas {
 public:
  virtual ~Cajas() = default;
  // A text and "Aceptar".
  virtual void mensaje(QWidget* padre, const QString& texto, const QString& titulo,
                       Icono icono = Icono::Ninguno) = 0;
  // "Sí" and "No"; closing the box is No.
  virtual bool pregunta(QWidget* padre, const QString& texto, const QString& titulo,
                        Icono icono = Icono::Ninguno) = 0;
  // A line of text; nothing when cancelled.
  virtual std::optional<QString> entrada(QWidget* padre, const QString& texto,
                                         const QString& titulo, const QString& inicial) = 0;
  // A file to open or to write, as a system path; nothing when cancelled. `filtro` as QFileDialog.
  virtual std::optional<QString> abrirFichero(QWidget* padre, const QString& titulo,
                                              const QString& carpeta, const QString& filtro) = 0;
  virtual std::optional<QString> guardarFichero(QWidget* padre, const QString& titulo,
                                                const QString& propuesto,
                                                const QString& filtro) = 0;
  // Shows a dialog modally and returns when it is closed.
  virtual void modal(QDialog& dialogo) = 0;
};
