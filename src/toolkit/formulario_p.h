// What a form keeps about its controls. Only for the sources of Formulario.
#pragma once

#include <QHash>
#include <QPointer>
#include <QSet>
#include <vector>

#include "toolkit/filtros.h"
#include "toolkit/foco.h"
#include "toolkit/formulario.h"

// A QObject, so that its connections end before the controls are destroyed.
struct Formulario::Privado : QObject {
  struct Control {
    std::vector<std::function<void()>> entrar, salir, dobleClic;
    std::vector<std::function<void(Tecla&)>> teclear;
    std::vector<std::function<bool(QKeyEvent&)>> bajarTecla;
    std::function<void(const QString&)> soltar;
    Filtro filtro = Filtro::Ninguno;
    bool conMascara = false;  // of the filter: the company's rules what an amount looks like
    QString anterior;         // of the filter: what the field held before what is being pasted
    bool decimal = false;
    bool sinSeleccion = false;
    bool sinIntro = false;
  };

  // While a reaction runs its form isn't destroyed, whatever loops it opens.
  class EnCurso {
   public:
    explicit EnCurso(Privado& p) : p_(p) { ++p_.enCurso; }
    ~EnCurso() {
      if (--p_.enCurso == 0 && p_.retirada) p_.forma.deleteLater();
    }
    EnCurso(const EnCurso&) = delete;
    EnCurso& operator=(const EnCurso&) = delete;

   private:
    Privado& p_;
  };

  explicit Privado(Formulario& forma)
      : forma(forma),
        foco({.sale = [this](QWidget* campo) { salirDe(campo); },
              .entra = [this](QWidget* campo) { entrarEn(campo); },
              .abandona = [this](const QWidget* control) { return control == cierre(); }}) {}

  // The control a widget is part of: the combo of its list, the grid of the cell being edited.
  static QWidget* controlDe(QWidget* parte);

  Control& control(QWidget* campo);
  void vigilar(QWidget* campo);
  void vigilarHijos();
  void guardarSitioDeBarras();
  void enfocarLaElegida();
  QString lugar(const QObject* control, const char* evento) const;
  QAbstractButton* cierre() const;

  void cambioDeFoco(QWidget* ahora);
  void salirDe(QWidget* campo);
  void entrarEn(QWidget* campo);
  void seleccionar(QWidget* campo) const;

  bool teclaPulsada(QWidget* campo, QObject* destino, QKeyEvent& evento);
  void ponFiltro(QLineEdit* campo, Filtro filtro, bool conMascara);
  QString mascara(const Control& control) const;
  bool filtrar(QWidget* campo, const Control& control, Tecla& tecla);
  bool introComoTab(QWidget* campo) const;
  bool eventoDeRaton(QWidget* campo, QEvent& evento);
  bool eventoDeArrastre(QWidget* campo, QEvent& evento);

  Formulario& forma;
  QHash<const QWidget*, Control> controles;
  QSet<const QObject*> vigilados;
  QPointer<QAbstractButton> botonDeCierre;
  Foco foco;
  QPointer<QWidget> reseleccionar;   // entered by mouse: selected when the button is released
  QPointer<QWidget> pulsacionVacia;  // its mouse button was released under a box
  int pitidos = 0;
  int enCurso = 0;        // reactions running, one inside the other
  bool retirada = false;  // to be destroyed when none is
  bool cargado = false;
  bool cerrado = false;
  bool cerrando = false;    // inside the close button's reaction
  bool reenviando = false;  // a key changed by a filter is on its way
};
