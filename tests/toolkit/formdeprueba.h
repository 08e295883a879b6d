// A small form that writes down what happens to it.
#pragma once

#include "soporte/escenario.h"

class FormDePrueba : public Formulario {
  Q_OBJECT
 public:
  explicit FormDePrueba(Contexto& contexto) : Formulario(contexto) {
    auto* menus = new QMenuBar(this);
    menus->addMenu("&Menu")->addAction("Nada");
    layout()->setMenuBar(menus);
    TxtConcepto->setEditable(true);
    CmdAceptar->setText("&Aceptar");
    CmdCancelar->setText("&Cancelar");
    for (auto* campo : {TxtA, TxtB, TxtC}) {
      alEntrar(campo, [this, campo] { hechos << "entra " + campo->objectName(); });
      alSalir(campo, [this, campo] { hechos << "sale " + campo->objectName(); });
    }
    alPulsar(CmdAceptar, [this] { hechos << "acepta"; });
    alPulsar(CmdCancelar, [this] {
      hechos << "cancela";
      descargar();
    });
  }

  void Form_Load() override {
    hechos << "carga";
    if (alCargar) alCargar(*this);
  }
  void Form_Activate() override { hechos << "activa"; }

  // What has happened since the last look.
  QStringList lee() { return std::exchange(hechos, {}); }

  using Formulario::alPulsar;
  using Formulario::alSalir;
  using Formulario::enfocar;
  using Formulario::importe;
  using Formulario::mensaje;
  using Formulario::mostrar;
  using Formulario::sinIntro;
  using Formulario::sinSeleccion;
  using Formulario::soloNumero;
  using Formulario::teclaDecimal;

  static inline std::function<void(FormDePrueba&)> alCargar;

  QLineEdit* TxtA = pon<QLineEdit>("TxtA");
  QLineEdit* TxtB = pon<QLineEdit>("TxtB");
  QLineEdit* TxtC = pon<QLineEdit>("TxtC");
  QComboBox* TxtConcepto = pon<QComboBox>("TxtConcepto");
  QPushButton* CmdAceptar = pon<QPushButton>("CmdAceptar");
  QPushButton* CmdCancelar = pon<QPushButton>("CmdCancelar");
  QStringList hechos;

 protected:
  // Each control stands under the one before, and comes after it with Tab.
  template <class C>
  C* pon(const char* nombre) {
    auto* control = new C(this);
    control->setObjectName(nombre);
    if (!layout()) setLayout(new QVBoxLayout);
    layout()->addWidget(control);
    return control;
  }
};

// It alone on the screen.
struct Prueba {
  Escenario e{Escenario::Ajustes};
  FormDePrueba& f = e.abre<FormDePrueba>();
  Teclado t{f};
  ~Prueba() { FormDePrueba::alCargar = {}; }
};
