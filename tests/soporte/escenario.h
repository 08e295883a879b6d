// A whole installation for one test: a program folder with its settings, a data folder with its
// catalogue, a company, an open session, a fixed day, and the script for the boxes.
//
//   Escenario e;                       // 15/03/2003, company "Prueba", session open
//   auto& forma = e.abre<FrmConceptos>();
//   Teclado t(forma);
#pragma once

#include <QtWidgets>

#include "accounts/registro.h"
#include "cartera/registro.h"
#include "commercial/registro.h"
#include "company/registro.h"
#include "iva/registro.h"
#include "journal/registro.h"
#include "oficial/registro.h"
#include "payroll/registro.h"
#include "reports/registro.h"
#include "soporte/guion.h"
#include "soporte/libros.h"
#include "soporte/otropuesto.h"
#include "soporte/teclado.h"
#include "soporte/tecleo.h"
#include "start/registro.h"
#include "toolkit/contexto.h"
#include "toolkit/formulario.h"
#include "toolkit/registro.h"
#include "toolkit/rejilla.h"
#include "transfer/registro.h"
#include "yearend/registro.h"

// The screens of all folders, as the program registers them.
void registraFormularios(Registro& formularios);

class RelojFijo : public Reloj {
 public:
  explicit RelojFijo(QDate hoy) : hoy_(hoy) {}
  QDate hoy() const override { return hoy_; }
  void ponEn(QDate hoy) { hoy_ = hoy; }

 private:
  QDate hoy_;
};

class Escenario {
 public:
  enum Hasta { Carpetas, Ajustes, Catalogo, Empresa };  // how far it is set up

  // In a temporary folder, unless it is told where to stay.
  explicit Escenario(Hasta hasta = Empresa, const DatosEmpresa& datos = empresaDePrueba(),
                     const QString& carpeta = {});
  ~Escenario();

  // "Prueba", 2003, cuentas of 3 digits and subcuentas of 8, with the default accounts.
  static DatosEmpresa empresaDePrueba();
  // Makes another company; abreEmpresa then opens it (or "Prueba") in the session.
  void creaEmpresa(const DatosEmpresa& datos);
  void abreEmpresa(const QString& nombre);

  DBEngine motor;
  Contexto ctx{motor};
  RelojFijo reloj{QDate(2003, 3, 15)};
  Guion guion{ctx.motor};
  std::unique_ptr<Registro> formularios;
  QStringList ejecutados;  // programs started, each with its arguments
  int finales = 0;         // how often the program has been ended

  // Opens a form as the bottom window, registered by its name, and waits for it to be active.
  template <class F>
  F& abre() {
    formularios->registra<F>();
    return static_cast<F&>(abre(QString::fromLatin1(F::staticMetaObject.className())));
  }
  Formulario& abre(const QString& nombre);
  // As its caller does, with the codes of the dialog protocol.
  Teclado abreCon(const QString& nombre, int codigoLlamada, const QString& valorElegido = {});
  bool abierto(const QString& nombre) const { return formularios->abierto(nombre) != nullptr; }
  // Closes it as the program does when another one takes its place.
  void cierra();

  QString carpetaPrograma() const { return carpeta_ + "/Programa"; }
  QString carpetaDatos() const { return carpeta_ + "/Datos"; }

  // The file of a company; of the open one unless told.
  std::unique_ptr<Database> abreBase(const QString& empresa = {}) const;
  // What the open company's file holds, read apart from any form: rows of texts, Null as empty.
  std::vector<QStringList> filas(const QString& fuente) const;
  // The cells of the first row with "|" between; empty without rows.
  QString fila(const QString& fuente) const;
  // The first cell of the first row; empty without rows.
  QString valor(const QString& fuente) const;
  // Adds a row to a table of the open company: names and values by turns.
  void inserta(const QString& tabla, const Valores& valores);
  // Changes a field of the first row of a source of the open company.
  void cambia(const QString& fuente, const QString& campo, const Variant& valor);
  // The lines of Errores.txt.
  QStringList errores() const;
  // A setting of Config.ini, read and written.
  QString ajuste(const QString& seccion, const QString& clave) const;
  void ponAjuste(const QString& seccion, const QString& clave, const QString& valor) const;

 private:
  QTemporaryDir temporal_;
  QString carpeta_;
};
