// A company in the main window with its tools at hand by keys; over the quarter's books, the
// journal and the trial balance are compared whole after each with what they must be.
#pragma once

#include "soporte/discolleno.h"
#include "soporte/escenario.h"
#include "start/menu/tablamenu.h"

using Filas = std::vector<QStringList>;

// A title of a recibo as long as they may be.
inline const QString kLargo =
    "Letra 8, aceptada y domiciliada en el banco, por el último plazo de las mesas y sillas del "
    "comedor";

// A line of the journal as it must stand; the amount of a haber is negative, unless it is that of a
// rectifying invoice.
struct Linea {
  int asiento;
  QString fecha;
  QString subcuenta;
  QString concepto;
  double importe;
  bool rectifica = false;

  bool alHaber() const { return (importe < 0) != rectifica; }

  bool operator==(const Linea&) const = default;
  friend void PrintTo(const Linea& l, std::ostream* salida) {
    *salida << l.asiento << ' ' << qPrintable(l.fecha) << ' ' << qPrintable(l.subcuenta) << ' '
            << qPrintable(l.concepto) << ' ' << l.importe << (l.rectifica ? " rectifica" : "");
  }
};

// A company in the main window: its menu and its dialogs by keys.
class PorElMenu : public testing::Test, protected Escenario {
 protected:
  explicit PorElMenu(Hasta hasta, const DatosEmpresa& datos = empresaDePrueba(),
                     const QString& carpeta = {})
      : Escenario(hasta, datos, carpeta) {}

  // An entry of the menu bar: Alt and the letter of its menu, down to it, Enter.
  void entrada(const char* nombre) {
    QStringList camino(QString::fromLatin1(nombre));
    const EntradaMenu* tramo = entradaMenu(camino[0]);
    for (; !tramo->padre.isEmpty(); tramo = entradaMenu(tramo->padre))
      camino.prepend(tramo->padre.toString());
    t->mnemonico(tramo->rotulo[tramo->rotulo.indexOf(u'&') + 1]);
    // Archivo and Ayuda have the same letter, and take turns at it.
    if (!QApplication::activePopupWidget())
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
  // Goes from field to field by Tab; a field's old text is selected when it is entered.
  static void rellena(Teclado& d, const Campos& campos) {
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
  static void alterna(Teclado& d, const char* casilla) {
    d.llega(casilla);
    d.tecla(Qt::Key_Space);
  }

  // The plan comes, and in it a subcuenta is looked for by its name and chosen.
  void esperaPlan(const QString& nombre) {
    guion.esperaDialogo("FrmVisualizaPlan", [nombre](Teclado& plan) {
      plan.llega("TxtBusquedaCuentas");
      plan.entra(nombre);
    });
  }
  // A line in the main window; one with a date begins an asiento.
  void teclea(const LineaDiario& linea) {
    tecleaLinea(*t, guion, ctx.sesion, linea, !linea.Fecha.isEmpty());
  }

  std::unique_ptr<Teclado> t;  // in the main window
};

class DiarioDelTrimestre : public PorElMenu {
 protected:
  DiarioDelTrimestre() : PorElMenu(Empresa, empresa("Comercial Ejemplo")) {
    reloj.ponEn(QDate(2024, 4, 2));
    altaSubcuentasTrimestre(*abreBase());
    asientaDiarioTrimestre(ctx.motor, ctx.sesion.rutaEmpresa());
    registraFormularios(*formularios);
    libro = lee();
    siguiente = static_cast<int>(libro.size());
    t = std::make_unique<Teclado>(abre("FrmMenu"));
  }
  // Without books yet, in a folder that is empty.
  explicit DiarioDelTrimestre(const QString& carpeta) : PorElMenu(Carpetas, {}, carpeta) {}

  static DatosEmpresa empresa(const QString& nombre) {
    DatosEmpresa datos = empresaDePrueba();
    datos.NombreEmpresa = nombre;
    datos.Ano = "2024";
    datos.Nif = "12345678";
    return datos;
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
  // Accepts while another station holds the file, and then with a full disk: either is told, with
  // nothing written, `texto` in `campo` as it was and the buttons usable.
  void fallaAlAceptar(Teclado& d, const char* campo, const QString& texto) {
    const QString ruta = ctx.sesion.rutaEmpresa();
    const auto falla = [&](const QString& mensaje) {
      guion.esperaMensaje(mensaje, "Librano", [&] { EXPECT_FALSE(t->visible("Bar")); });
      acepta(d);
      EXPECT_EQ(d.textoDe(campo), texto);
      EXPECT_TRUE(d.control("CmdAceptar").isEnabled() && d.control("CmdCancelar").isEnabled());
      comprueba();
    };
    motor.setLockTimeout(30);
    {
      OtroPuesto otro(rutaSistema(ruta), "BEGIN IMMEDIATE;");
      falla(errorEnCaja(3260, ruta));
    }
    {
      const DiscoLleno lleno;
      falla(errorEnCaja(3043, ruta) +
            ". Se ha deshecho lo último anotado, que no llegó a guardarse (cambios deshechos: 0)");
    }
  }

  // The whole journal is `libro`, and the trial balance is that of its lines.
  void comprueba() const {
    auto hay = lee();
    auto falta = libro;
    std::erase_if(falta, [&](const auto& linea) {
      const auto it = hay.find(linea.first);
      return it != hay.end() && it->second == linea.second && (hay.erase(it), true);
    });
    EXPECT_EQ(hay, falta);

    std::map<std::pair<QString, int>, std::pair<qint64, qint64>> resto;  // in cents
    for (const auto& [numero, l] : libro) {
      auto& [debe, haber] = resto[{l.subcuenta, l.fecha.mid(3, 2).toInt()}];
      (l.alHaber() ? haber : debe) += qRound64(l.importe * 100);
    }
    for (const QStringList& f :
         filas("Select Subcuenta, Mes, SumaDeDebe, SumaDeHaber from SqlSumasSaldosN4")) {
      auto& [debe, haber] = resto[{f[0], f[1].toInt()}];
      debe -= qRound64(Variant(f[2]).number() * 100);
      haber -= qRound64(Variant(f[3]).number() * 100);
    }
    for (const auto& [clave, saldo] : resto)
      EXPECT_EQ(saldo, std::pair(0LL, 0LL)) << qPrintable(clave.first) << ' ' << clave.second;
    compruebaVentana();
  }
  // The main window shows what is in `libro`: each line on show, the totals, the marked asiento.
  void compruebaVentana() const {
    const QString mascara = ctx.sesion.MascaraImporte;
    QSet<QStringList> lineas;
    double debe = 0, haber = 0, marcado = 0;
    const QString enCurso = rejilla().valor("NAsiento");
    for (const auto& [numero, l] : libro) {
      (l.alHaber() ? haber : debe) += l.importe;
      if (QString::number(l.asiento) == enCurso) marcado += l.importe;
      lineas << QStringList{l.subcuenta,
                            l.fecha,
                            QString::number(l.asiento),
                            l.concepto,
                            Format(l.alHaber() ? 0.0 : l.importe, mascara),
                            Format(l.alHaber() ? l.importe : 0.0, mascara)};
    }
    for (int fila = 0; fila < rejilla().filas(); ++fila) {
      QStringList linea;
      for (int columna = 1; columna < 7; ++columna) linea << rejilla().texto(fila, columna);
      for (const int importe : {4, 5})  // the side without one shows nothing
        if (linea[importe].isEmpty()) linea[importe] = Format(0.0, mascara);
      EXPECT_TRUE(lineas.contains(linea)) << qPrintable(linea.join(" | "));
    }
    EXPECT_EQ(t->textoDe("TxtTotalDebe"), Format(debe, mascara));
    EXPECT_EQ(t->textoDe("TxtTotalHaber"), Format(haber, mascara));
    EXPECT_EQ(t->textoDe("TxtTotalDescuadre"), Format(debe + haber, mascara));
    EXPECT_EQ(t->textoDe("LblFilaMarcado"), ("Marcado " + enCurso).trimmed());
    EXPECT_EQ(t->textoDe("TxtMarcadoDescuadre"), Format(marcado, mascara));
  }
  // The lines of the file, by their number.
  std::map<int, Linea> lee() const {
    std::map<int, Linea> todas;
    for (const QStringList& f :
         filas("Select NLinea, NAsiento, Fecha, Subcuenta, Descripcion, Importe, DH from Diario")) {
      const double importe = Variant(f[5]).number();
      todas[f[0].toInt()] = {f[1].toInt(), f[2],    f[3],
                             f[4],         importe, (importe < 0) != (f[6] == "H")};
    }
    return todas;
  }
  // The lines that an asiento adds to the journal, each a subcuenta and an amount.
  void anota(int asiento, const QString& fecha, const QString& concepto,
             const std::vector<std::pair<QString, double>>& lineas, bool rectifica = false) {
    for (const auto& [subcuenta, importe] : lineas)
      libro[siguiente++] = {asiento, fecha, subcuenta, concepto, importe, rectifica};
  }
  // Takes an asiento out of what must be there.
  void sinAsiento(int numero) {
    std::erase_if(libro, [=](const auto& linea) { return linea.second.asiento == numero; });
  }
  void cambiaLinea(int numero, const QString& campo, const Variant& valor) {
    cambia("Select * from Diario where NLinea=" + QString::number(numero), campo, valor);
  }
  // Makes an asiento that of an invoice, with its row of the register.
  void factura(const QString& codigo, int asiento) {
    for (const auto& [numero, linea] : lee())
      if (linea.asiento == asiento) cambiaLinea(numero, "ApunteIVA", codigo);
    inserta("RSIVA", {{"Codigo", codigo}, {"Asiento", asiento}, {"Factura", "A-7"}});
  }
  const Rejilla& rejilla() const { return t->control<Rejilla>("GrdApuntes"); }

  std::map<int, Linea> libro;
  int siguiente = 0;  // number of the next line
};
