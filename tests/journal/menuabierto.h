// The main window over the company "Prueba" of 2003 with three subcuentas, on 15/03/2003.
#pragma once

#include "journal/frmmenu.h"
#include "soporte/escenario.h"

class MenuAbierto : public testing::Test, protected Escenario {
 protected:
  MenuAbierto() {
    for (const auto& [codigo, nombre] :
         {std::pair("43000001", "Almacenes Ruiz"), {"57000001", "Caja"}, {"57200001", "Banco"}})
      inserta("Subcuentas", subcuentaDe(codigo, nombre));
  }

  FrmMenu& abreMenu() {
    FrmMenu& forma = abre<FrmMenu>();
    t = std::make_unique<Teclado>(forma);
    return forma;
  }
  // One line through the keyboard, in a new asiento if it is given a date.
  void linea(const char* subcuenta, const QString& debe, const QString& haber,
             const QString& fecha = {}) {
    const LineaDiario datos{{}, fecha, subcuenta, "Apunte", debe, haber};
    tecleaLinea(*t, guion, ctx.sesion, datos, !fecha.isEmpty());
  }
  void vacia(const char* campo) {
    t->enfoca(campo);
    t->tecla(Qt::Key_A, Qt::ControlModifier);
    t->tecla(Qt::Key_Delete);
  }
  QStringList totales(const QString& fila) const {
    QStringList textos;
    for (const char* columna : {"Debe", "Haber", "Descuadre"})
      textos << t->textoDe(qPrintable("Txt" + fila + columna));
    return textos;
  }
  QString contador(const char* campo) const {
    return valor(QString("Select %1 from Empresa").arg(campo));
  }

  std::unique_ptr<Teclado> t;
};
