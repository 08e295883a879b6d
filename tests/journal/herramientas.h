// The main window with the journal's tools at hand, over two asientos typed by keys.
#pragma once

#include <QAction>
#include <QProcess>

#include "journal/menuabierto.h"
#include "journal/registro.h"

using Filas = std::vector<QStringList>;

struct Herramientas : MenuAbierto {
  Herramientas() {
    registraJournal(*formularios);
    menu = &abreMenu();
    linea("57000001", QStringLiteral("100"), {}, QStringLiteral("02/01/2003"));
    linea("43000001", {}, QStringLiteral("100"));
    linea("57200001", QStringLiteral("30"), {}, QStringLiteral("05/02/2003"));
    linea("43000001", {}, QStringLiteral("30"));
  }

  void entrada(const char* nombre) {
    auto* accion = menu->findChild<QAction*>(QLatin1String(nombre));
    ASSERT_TRUE(accion) << nombre;
    accion->trigger();
    reposar();
  }
  // A dialog that comes with an entry of the menu.
  void dialogo(const char* nombre, const char* forma, const std::function<void(Teclado&)>& paso) {
    guion.esperaDialogo(QString::fromLatin1(forma), paso);
    entrada(nombre);
  }

  Filas diario() const {
    return filas("Select NLinea, NAsiento, Fecha, Subcuenta, Importe from Diario order by NLinea");
  }
  // The trial balance: debe and haber of each subcuenta in each month.
  Filas balance() const {
    return filas(
        "Select Subcuenta, SumaDeDebe, SumaDeHaber, Mes from SqlSumasSaldosN4 order by Subcuenta, "
        "Mes");
  }
  const Rejilla& rejilla() const { return t->control<Rejilla>("GrdApuntes"); }
  void asiento(int linea, int numero, const char* fecha, const char* subcuenta, double importe,
               const Variant& iva = {}) {
    inserta(QStringLiteral("Diario"), {{QStringLiteral("NLinea"), linea},
                                       {QStringLiteral("NAsiento"), numero},
                                       {QStringLiteral("Fecha"), fecha},
                                       {QStringLiteral("Subcuenta"), subcuenta},
                                       {QStringLiteral("Descripcion"), "Apunte"},
                                       {QStringLiteral("DH"), importe < 0 ? "H" : "D"},
                                       {QStringLiteral("Importe"), importe},
                                       {QStringLiteral("ApunteIVA"), iva}});
  }
  void registroDeIVA(const char* codigo, int asiento) {
    inserta(QStringLiteral("RSIVA"),
            {{QStringLiteral("Codigo"), codigo}, {QStringLiteral("Asiento"), asiento}});
  }

  FrmMenu* menu = nullptr;
};
