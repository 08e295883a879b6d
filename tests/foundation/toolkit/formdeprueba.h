// A small form that writes down what happens to it.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "foundation/toolkit/formulario.h"

class FormDePrueba : public Formulario {
  Q_OBJECT
 public:
  explicit FormDePrueba(Contexto& contexto) : Formulario(contexto) {
    auto* sitio = new QVBoxLayout(this);
    auto* menus = new QMenuBar(this);
    menus->addMenu(QStringLiteral("&Menu"))->addAction(QStringLiteral("Nada"));
    sitio->setMenuBar(menus);
    for (auto* control : std::initializer_list<QWidget*>{TxtA, TxtB, TxtC, TxtConcepto, ChkSi,
                                                         Opt_0, Opt_1, CmdAceptar, CmdCancelar}) {
      sitio->addWidget(control);
    }
    const std::pair<QWidget*, const char*> nombres[] = {{TxtA, "TxtA"},
                                                        {TxtB, "TxtB"},
                                                        {TxtC, "TxtC"},
                                                        {ChkSi, "ChkSi"},
                                                        {Opt_0, "Opt_0"},
                                                        {Opt_1, "Opt_1"},
                                                        {TxtConcepto, "TxtConcepto"},
                                                        {CmdAceptar, "CmdAceptar"},
                                                        {CmdCancelar, "CmdCancelar"}};
    for (const auto& [control, nombre] : nombres) control->setObjectName(QLatin1String(nombre));
    TxtConcepto->setEditable(true);
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

  using Formulario::aceptaArrastre;
  using Formulario::alCambiar;
  using Formulario::alElegirOpcion;
  using Formulario::alPulsar;
  using Formulario::alPulsarMatriz;
  using Formulario::alSalir;
  using Formulario::alTeclear;
  using Formulario::enfocar;
  using Formulario::fecha;
  using Formulario::importe;
  using Formulario::mensaje;
  using Formulario::mostrar;
  using Formulario::opcion;
  using Formulario::setOpcion;
  using Formulario::sinIntro;
  using Formulario::sinSeleccion;
  using Formulario::soloNumero;
  using Formulario::teclaDecimal;

  static inline std::function<void(FormDePrueba&)> alCargar;

  QLineEdit* TxtA = new QLineEdit(this);
  QLineEdit* TxtB = new QLineEdit(this);
  QLineEdit* TxtC = new QLineEdit(this);
  QComboBox* TxtConcepto = new QComboBox(this);
  QCheckBox* ChkSi = new QCheckBox(this);
  QRadioButton* Opt_0 = new QRadioButton(this);
  QRadioButton* Opt_1 = new QRadioButton(this);
  QPushButton* CmdAceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
  QPushButton* CmdCancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
  QStringList hechos;
};
