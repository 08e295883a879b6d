// The quarter's books in the main window, with the journal's tools at hand: each is driven by keys,
// and after it the trial balance is what it must be, row by row.
#pragma once

#include <QApplication>
#include <QMenu>

#include <map>

#include "accounts/registro.h"
#include "foundation/menu/tablamenu.h"
#include "foundation/toolkit/rejilla.h"
#include "journal/registro.h"
#include "reports/registro.h"
#include "soporte/escenario.h"
#include "soporte/libros.h"
#include "soporte/tecleo.h"

using Filas = std::vector<QStringList>;

// What a tool adds to the debe and to the haber of a subcuenta in a month; a haber is negative.
struct Movido {
  const char* subcuenta;
  int mes;
  double debe;
  double haber;
};

class DiarioDelTrimestre : public testing::Test, protected Escenario {
 protected:
  DiarioDelTrimestre() : Escenario(Empresa, empresa("Comercial Ejemplo")) {
    reloj.ponEn(QDate(2024, 4, 2));
    altaSubcuentasTrimestre(*ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa()));
    asientaDiarioTrimestre(ctx.motor, ctx.sesion.rutaEmpresa());
    registraAccounts(*formularios);
    registraJournal(*formularios);
    registraReports(*formularios);
    balance_ = balance();
    t = std::make_unique<Teclado>(abre("FrmMenu"));
  }

  static DatosEmpresa empresa(const QString& nombre) {
    DatosEmpresa datos = empresaDePrueba();
    datos.NombreEmpresa = nombre;
    datos.Ano = "2024";
    return datos;
  }

  // An entry of the menu bar: Alt and the letter of its menu, down to it, Enter.
  void entrada(const char* nombre) {
    QStringList camino(QString::fromLatin1(nombre));
    const EntradaMenu* tramo = entradaMenu(camino[0]);
    for (; !tramo->padre.isEmpty(); tramo = entradaMenu(tramo->padre))
      camino.prepend(tramo->padre.toString());
    t->mnemonico(tramo->rotulo[tramo->rotulo.indexOf(u'&') + 1]);
    for (const QString& paso : camino.mid(1)) {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_TRUE(menu) << qPrintable(paso);
      Teclado teclas(*menu);
      const auto enPaso = [&] {
        const QAction* a = menu->activeAction();
        return a && (a->menu() ? a->menu()->objectName() : a->objectName()) == paso;
      };
      for (auto n = menu->actions().size(); n > 0 && !enPaso(); --n) teclas.tecla(Qt::Key_Down);
      ASSERT_TRUE(enPaso()) << qPrintable(paso);
      teclas.intro();
    }
  }
  // The dialog of an entry, driven by `paso`.
  void herramienta(const char* nombre, std::function<void(Teclado&)> paso) {
    const QString dialogo = entradaMenu(QString::fromLatin1(nombre))->destino.toString();
    guion.esperaDialogo(dialogo, std::move(paso));
    entrada(nombre);
  }
  // The grid on a line of an asiento, counted from 0.
  void enLinea(int asiento, int linea) {
    herramienta("MnuLocAsiento", [&](Teclado& busca) {
      rellena(busca, {{"TxtAsiento", QString::number(asiento)}});
      acepta(busca);
    });
    t->llega("GrdApuntes");
    for (; linea > 0; --linea) t->tecla(Qt::Key_Down);
  }
  // Goes from field to field by Tab; a field's old text is selected when it is entered.
  static void rellena(Teclado& d, const std::vector<std::pair<const char*, QString>>& campos) {
    for (const auto& [campo, texto] : campos) {
      d.llega(campo);
      d.tecla(Qt::Key_Delete);
      d.teclea(texto);
    }
  }
  static void acepta(Teclado& d) {
    d.llega("CmdAceptar");
    d.intro();
  }

  // What the trial balance has gained since the last time, and nothing else.
  void compruebaBalance(const std::vector<Movido>& movidos = {}) {
    for (const auto& [subcuenta, mes, debe, haber] : movidos)
      suma(balance_, {subcuenta, mes}, {qRound64(debe * 100), qRound64(haber * 100)});
    Balance diferencia = balance_;
    for (const auto& [clave, hay] : balance()) suma(diferencia, clave, {-hay.first, -hay.second});
    EXPECT_EQ(diferencia, Balance());
  }

  // The lines of a condition: number, asiento, date, subcuenta and amount.
  Filas lineas(const QString& condicion) const {
    return filas("Select NLinea, NAsiento, Fecha, Subcuenta, Importe from Diario where " +
                 condicion + " order by NLinea");
  }
  // Marks a line as an invoice's, and writes its row of the register.
  void factura(const QString& codigo, int asiento) {
    for (const QStringList& fila : lineas("NAsiento=" + QString::number(asiento)))
      cambia("Select * from Diario where NLinea=" + fila[0], "ApunteIVA", codigo);
    inserta("RSIVA", {{"Codigo", codigo}, {"Asiento", asiento}, {"Factura", "A-7"}});
  }
  const Rejilla& rejilla() const { return t->control<Rejilla>("GrdApuntes"); }

  std::unique_ptr<Teclado> t;

 private:
  using Clave = std::pair<QString, int>;
  using Centimos = std::pair<qint64, qint64>;
  using Balance = std::map<Clave, Centimos>;

  static void suma(Balance& balance, const Clave& clave, const Centimos& mas) {
    Centimos& saldo = balance[clave];
    saldo = {saldo.first + mas.first, saldo.second + mas.second};
    if (saldo == Centimos()) balance.erase(clave);
  }
  Balance balance() const {
    Balance todo;
    for (const QStringList& f :
         filas("Select Subcuenta, Mes, SumaDeDebe, SumaDeHaber from SqlSumasSaldosN4")) {
      suma(todo, {f[0], f[1].toInt()},
           {qRound64(Variant(f[2]).number() * 100), qRound64(Variant(f[3]).number() * 100)});
    }
    return todo;
  }

  Balance balance_;
};
