// The one seam through which boxes, questions, inputs, file pickers and modal dialogs are shown.
//
// The program shows Qt's, with Spanish buttons; tests play a script. Whatever is shown, what is
// pending in the files is written before it, so what the user reads is already safe. If another
// station keeps it from being written the user is asked first: 3059 is raised when he gives it up,
// 3026 or 3043 when the disk refused it.
#pragma once

#include <optional>
#include <QString>
#include <QStringList>

class DBEngine;
class QWidget;
class QDialog;

enum class Icono { Ninguno, Aviso, Alto, Pregunta, Informacion };

class Cajas {
 public:
  explicit Cajas(DBEngine& motor) : motor_(motor) {}
  virtual ~Cajas() = default;
  Cajas(const Cajas&) = delete;
  Cajas& operator=(const Cajas&) = delete;

  // A text and "Aceptar".
  void mensaje(QWidget* padre, const QString& texto, const QString& titulo,
               Icono icono = Icono::Ninguno);
  // "Sí" and "No"; closing the box is No.
  bool pregunta(QWidget* padre, const QString& texto, const QString& titulo,
                Icono icono = Icono::Ninguno);
  // A line of text; nothing when cancelled.
  std::optional<QString> entrada(QWidget* padre, const QString& texto, const QString& titulo,
                                 const QString& inicial);
  // A file to open or to write, as a system path; nothing when cancelled. `filtro` as QFileDialog.
  std::optional<QString> abrirFichero(QWidget* padre, const QString& titulo, const QString& carpeta,
                                      const QString& filtro);
  std::optional<QString> guardarFichero(QWidget* padre, const QString& titulo,
                                        const QString& propuesto, const QString& filtro);
  // Shows a dialog modally and returns when it is closed.
  void modal(QDialog& dialogo);

  // Tells of a failure, where nobody is left to catch another one: raises nothing.
  void aviso(QWidget* padre, const QString& texto, const QString& titulo);
  // Writes what is pending, without showing anything unless it can't be written: then the user
  // chooses between trying again and giving it up, while it goes on being tried.
  void guardaPendiente(QWidget* padre);
  bool eligiendo() const { return eligiendo_; }  // that choice is on the screen

 protected:
  enum class Eleccion { Reintentar, Descartar };

  DBEngine& motor() const { return motor_; }
  virtual void ensenaMensaje(QWidget* padre, const QString& texto, const QString& titulo,
                             Icono icono) = 0;
  virtual bool ensenaPregunta(QWidget* padre, const QString& texto, const QString& titulo,
                              Icono icono) = 0;
  virtual std::optional<QString> ensenaEntrada(QWidget* padre, const QString& texto,
                                               const QString& titulo, const QString& inicial) = 0;
  virtual std::optional<QString> ensenaAbrir(QWidget* padre, const QString& titulo,
                                             const QString& carpeta, const QString& filtro) = 0;
  virtual std::optional<QString> ensenaGuardar(QWidget* padre, const QString& titulo,
                                               const QString& propuesto, const QString& filtro) = 0;
  virtual void ensenaModal(QDialog& dialogo) = 0;
  // "Reintentar" and "Descartar". It closes by itself, as Reintentar, as soon as the engine tells
  // that nothing is pending any more: saved() or undone().
  virtual Eleccion ensenaEleccion(QWidget* padre, const QString& texto) = 0;

 private:
  DBEngine& motor_;
  bool eligiendo_ = false;
};
