// The script of a scenario: which boxes and dialogs come, in order, and what is answered.
//
//   Guion guion;
//   guion.esperaPregunta("¿ Deseas salir de Librano ?", false);
//   guion.esperaDialogo("FrmSubCuentas", [](Teclado& t) { t.teclea("Caja"); t.pulsa("CmdAceptar");
//   });
//
// A box that wasn't announced, another text than announced, and an announced one that never came
// are failures of the test. What a dialog's step announces is for the time of that dialog.
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <source_location>

#include "toolkit/cajas.h"

class Teclado;

class Guion : public Cajas {
 public:
  explicit Guion(DBEngine& motor) : Cajas(motor), pendientes_(1) {}
  ~Guion() override;

  using Sitio = std::source_location;  // of the announcement, where its failures are told

  // A null title is any title. The step runs while it stands.
  void esperaMensaje(const QString& texto, const QString& titulo = {},
                     std::function<void()> paso = {}, Sitio sitio = Sitio::current());
  void esperaPregunta(const QString& texto, bool respuesta, const QString& titulo = {},
                      std::function<void()> paso = {}, Sitio sitio = Sitio::current());
  void esperaEntrada(const QString& texto, std::optional<QString> respuesta,
                     Sitio sitio = Sitio::current());
  void esperaFichero(std::optional<QString> respuesta,
                     Sitio sitio = Sitio::current());  // to open or to write
  // The step drives the dialog until it has closed; one still open after it is a failure.
  void esperaDialogo(const QString& nombre, std::function<void(Teclado&)> paso,
                     Sitio sitio = Sitio::current());
  // The choice that a save which can't be done leaves. The step runs while it stands; its answer
  // doesn't count if the engine has saved or undone by then.
  void esperaEleccion(bool reintentar, std::function<void()> paso = {},
                      Sitio sitio = Sitio::current());
  // All that was announced has come.
  bool agotado() const;
  // The name that was proposed for the file last written.
  QString propuesto;
  // Is shown each dialog as its step has left it.
  std::function<void(QWidget&)> mirar = [](QWidget&) {};
  QString libros;  // the folder where the books that are read are left too, numbered
  int leidos = 0;

 protected:
  void ensenaMensaje(QWidget* padre, const QString& texto, const QString& titulo,
                     Icono icono) override;
  bool ensenaPregunta(QWidget* padre, const QString& texto, const QString& titulo,
                      Icono icono) override;
  std::optional<QString> ensenaEntrada(QWidget* padre, const QString& texto, const QString& titulo,
                                       const QString& inicial) override;
  std::optional<QString> ensenaAbrir(QWidget* padre, const QString& titulo, const QString& carpeta,
                                     const QString& filtro) override;
  std::optional<QString> ensenaGuardar(QWidget* padre, const QString& titulo,
                                       const QString& propuesto, const QString& filtro) override;
  void ensenaModal(QDialog& dialogo) override;
  Eleccion ensenaEleccion(QWidget* padre, const QString& texto) override;

 private:
  enum class Clase { Mensaje, Pregunta, Entrada, Fichero, Dialogo, Eleccion };
  struct Paso {
    Clase clase = Clase::Mensaje;
    QString texto;
    QString titulo;
    bool si = false;
    std::optional<QString> respuesta;
    std::function<void(Teclado&)> conducir;
    std::function<void()> entretanto;
    Sitio sitio = Sitio::current();
  };
  static QString nombre(Clase clase, const QString& texto);
  std::optional<Paso> siguiente(Clase clase, const QString& texto, const QString& titulo);
  Paso llega(QWidget* padre, Clase clase, const QString& texto, const QString& titulo);
  void ensenar(QWidget* padre);

  std::list<std::deque<Paso>> pendientes_;  // one level for each dialog being driven
};
