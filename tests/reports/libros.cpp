// The books of the quarter, as their reader sees them.
#include <gtest/gtest.h>

#include <map>

#include "foundation/data/datacontrol.h"
#include "foundation/formato.h"
#include "reports/errores.h"
#include "reports/impreso.h"

namespace {

const QString kMascara = QStringLiteral("#,##0.00");

QString importe(double x) {
  return Format(x, kMascara);
}

struct Saldo {
  double debe = 0, haber = 0, saldo = 0;
  QString titulo;
};

class Trimestre : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    libros = new Libros;
    libros->asientaTrimestre();
    for (const QStringList& f : leeCsv(QStringLiteral("trimestre/saldos-trimestre.csv"))) {
      if (f[0] == u"Total") continue;
      saldos[f[0]] = {Variant(f[1]).number(), Variant(f[2]).number(), Variant(f[3]).number(), {}};
    }
    for (const QStringList& f : leeCsv(QStringLiteral("trimestre/subcuentas.csv"))) {
      if (saldos.count(f[0])) saldos[f[0]].titulo = f[1];
    }
  }
  static void TearDownTestSuite() {
    delete libros;
    saldos.clear();
  }

  static Saldo suma(const std::function<bool(const QString&)>& entra) {
    Saldo s;
    for (const auto& [codigo, uno] : saldos) {
      if (!entra(codigo)) continue;
      s.debe += uno.debe;
      s.haber += uno.haber;
      s.saldo += uno.saldo;
    }
    return s;
  }
  static QString partes(const Saldo& s) {
    QString t = importe(s.debe) + u' ' + importe(s.haber);
    return s.saldo == 0 ? t : t + u' ' + importe(std::abs(s.saldo));
  }

  static inline Libros* libros = nullptr;
  static inline std::map<QString, Saldo> saldos;
};

QString entreMeses(const QString& campo, const QString& desde, const QString& hasta) {
  return QStringLiteral("%1>=%2 and %1<=%3").arg(campo, desde, hasta);
}

QString entreSubcuentas(const QString& campo, const QString& desde, const QString& hasta) {
  return QStringLiteral("%1 >= '%2' and %1 <= '%3'").arg(campo, desde, hasta);
}

const QString kAno = QStringLiteral(
    "{SqlDiarioPrincipal.Fecha} >= date(2024,1,1) and "
    "{SqlDiarioPrincipal.Fecha} <= date(2024,12,31)");
const QString kTodosLosMeses = QStringLiteral(" and {@mes} >= 01 and {@Mes} <= 12");

TEST_F(Trimestre, sumasYSaldosPorSubcuentas) {
  Impreso libro(*libros, QStringLiteral("SumSalN4.rpt"),
                entreSubcuentas(QStringLiteral("{Diario.Subcuenta}"), QStringLiteral("00000000"),
                                QStringLiteral("99999999")) +
                    kTodosLosMeses,
                QStringLiteral("Desde : 01-Enero   ~   Hasta : 12-Diciembre"));
  for (const QStringList& p : libro.paginas()) {
    EXPECT_TRUE(p.value(0).startsWith(u"Tienda")) << p.value(0).toStdString();
    EXPECT_TRUE(p.join(u'|').contains(u"Ejercicio 2024"));
    EXPECT_TRUE(p.join(u'|').contains(u"Desde : 01-Enero ~ Hasta : 12-Diciembre"));
  }
  double deudor = 0, acreedor = 0;
  for (const auto& [codigo, s] : saldos) {
    EXPECT_EQ(libro.linea(codigo), codigo + u' ' + s.titulo + u' ' + partes(s));
    (s.saldo > 0 ? deudor : acreedor) += std::abs(s.saldo);
  }
  const Saldo total = suma([](const QString&) { return true; });
  EXPECT_EQ(
      libro.linea(QStringLiteral("Totales")),
      QStringLiteral("Totales %1 %2 %3 %4")
          .arg(importe(total.debe), importe(total.haber), importe(deudor), importe(acreedor)));

  Impreso febrero(*libros, QStringLiteral("SumSalN4.rpt"),
                  QStringLiteral("{Diario.Subcuenta} >= '43000001' and {Diario.Subcuenta} <= "
                                 "'43000007' and {@mes} >= 02 and {@Mes} <= 02"));
  for (const QString& l : febrero.lineas()) {
    if (l[0].isDigit() && l.contains(u',')) {
      EXPECT_TRUE(l.startsWith(u"4300000")) << l.toStdString();
    }
  }
  EXPECT_FALSE(febrero.linea(QStringLiteral("4300000")).isEmpty());
}

// One template under three selections: cuentas of the journal, and the two levels above.
TEST_F(Trimestre, sumasYSaldosPorNiveles) {
  const struct {
    QString seleccion;
    int digitos;
  } casos[] = {
      {QStringLiteral(
           "Left({Diario.Subcuenta},3) >= '000' and left({Diario.Subcuenta},3) <= '999'") +
           kTodosLosMeses,
       3},
      {entreSubcuentas(QStringLiteral("{SqlSumasSaldosN2.NNivel}"), QStringLiteral("00"),
                       QStringLiteral("99")),
       2},
      {entreSubcuentas(QStringLiteral("{SqlSumasSaldosN1.NNivel}"), QStringLiteral("0"),
                       QStringLiteral("9")),
       1},
  };
  for (const auto& c : casos) {
    Impreso libro(*libros, QStringLiteral("SumSalN3.rpt"), c.seleccion, QStringLiteral("todo"));
    std::map<QString, Saldo> niveles;
    for (const auto& [codigo, s] : saldos) niveles[codigo.left(c.digitos)];
    for (auto& [nivel, s] : niveles) {
      s = suma([&](const QString& codigo) { return codigo.startsWith(nivel); });
      const QString linea = libro.linea(nivel + u' ');
      EXPECT_TRUE(linea.endsWith(u' ' + partes(s))) << linea.toStdString();
    }
    const Saldo total = suma([](const QString&) { return true; });
    EXPECT_TRUE(libro.linea(QStringLiteral("Totales")).contains(importe(total.debe)));
  }
  Impreso uno(*libros, QStringLiteral("SumSalN3.rpt"),
              entreSubcuentas(QStringLiteral("{SqlSumasSaldosN1.NNivel}"), QStringLiteral("5"),
                              QStringLiteral("5")));
  EXPECT_TRUE(uno.linea(QStringLiteral("4 ")).isEmpty());
  EXPECT_FALSE(uno.linea(QStringLiteral("5 ")).isEmpty());
}

TEST_F(Trimestre, diario) {
  Impreso libro(*libros, QStringLiteral("Diario.rpt"),
                kAno + QStringLiteral(" and {SqlDiarioPrincipal.NAsiento}>=0 and "
                                      "{SqlDiarioPrincipal.NAsiento}<=9999999999999"),
                QStringLiteral("Desde : 01/01/2024   ~   Hasta : 31/12/2024"));
  const auto filas = leeCsv(QStringLiteral("trimestre/diario-trimestre.csv"));
  const QStringList lineas = libro.lineas();
  qsizetype anterior = -1;
  for (const QStringList& f : filas) {
    const QString importe = f[4].isEmpty() ? f[5] : f[4];
    const QString comienzo = QStringList{f[0], f[1], f[2]}.join(u' ') + u' ';
    const QString final = u' ' + Format(Variant(importe).number(), kMascara);
    qsizetype sitio = -1;
    for (qsizetype i = anterior + 1; i < lineas.size() && sitio < 0; ++i) {
      if (lineas[i].startsWith(comienzo) && lineas[i].endsWith(final)) sitio = i;
    }
    ASSERT_GT(sitio, anterior) << f.join(u';').toStdString();
    anterior = sitio;
  }
  // The sums that a page hands on are those with which the next begins, and each page says which it
  // is.
  const auto& paginas = libro.paginas();
  ASSERT_GT(paginas.size(), 4);
  double debe = 0;
  for (int n = 1; n <= paginas.size(); ++n) {
    EXPECT_FALSE(
        libro.linea(QStringLiteral("15/04/2024 Página %1 de %2").arg(n).arg(paginas.size()), n)
            .isEmpty());
    if (n > 1) {
      EXPECT_EQ(libro.linea(QStringLiteral("Suma anterior"), n).section(u' ', 2),
                libro.linea(QStringLiteral("Suma y sigue"), n - 1).section(u' ', 3));
    }
    const QString sigue = libro.linea(QStringLiteral("Suma y sigue"), n);
    EXPECT_EQ(sigue.isEmpty(), n == paginas.size());
    if (n == paginas.size()) break;
    const double hasta = Variant(sigue.section(u' ', 3, 3)).number();
    EXPECT_GT(hasta, debe);
    debe = hasta;
  }
  const Saldo total = suma([](const QString&) { return true; });
  EXPECT_EQ(libro.linea(QStringLiteral("Total diario")),
            QStringLiteral("Total diario %1 %2").arg(importe(total.debe), importe(total.haber)));
  EXPECT_EQ(lineas.filter(QStringLiteral("Total asiento")).size(), 120);
  EXPECT_EQ(libro.linea(QStringLiteral("Total asiento 1 ")),
            QStringLiteral("Total asiento 1 60.000,00 60.000,00"));

  Impreso dos(*libros, QStringLiteral("Diario.rpt"),
              kAno + QStringLiteral(" and {SqlDiarioPrincipal.NAsiento}>=2 and "
                                    "{SqlDiarioPrincipal.NAsiento}<=3"));
  EXPECT_EQ(dos.lineas().filter(QStringLiteral("Total asiento")).size(), 2);
}

// The ledger shows the balances that the last extracts left in the journal, over the whole year.
TEST_F(Trimestre, mayor) {
  DataControl lineas(libros->motor);
  lineas.bind(libros->rutaEmpresa(), QStringLiteral("Select * from SqlDiarioPrincipal order by "
                                                    "Subcuenta, Fecha, NAsiento, NLinea"));
  QString subcuenta;
  double saldo = 0;
  for (; !lineas.Eof(); lineas.MoveNext()) {
    if (lineas.Fields("Subcuenta").text() != subcuenta) saldo = 0;
    subcuenta = lineas.Fields("Subcuenta").text();
    saldo += lineas.Fields("Debe").number() + lineas.Fields("Haber").number();
    lineas.Edit();
    lineas.Fields("Saldo") = saldo;
    lineas.Update();
  }
  Impreso libro(*libros, QStringLiteral("May1.rpt"),
                entreSubcuentas(QStringLiteral("{SqlDiarioPrincipal.Subcuenta}"),
                                QStringLiteral("10000000"), QStringLiteral("79999999")) +
                    QStringLiteral(" and ") + kAno);
  const QStringList sumas = libro.lineas().filter(QStringLiteral("Sumas y saldo"));
  ASSERT_EQ(size_t(sumas.size()), saldos.size());
  qsizetype i = 0;
  for (const auto& [codigo, s] : saldos) {
    EXPECT_FALSE(libro.linea(codigo + u' ' + s.titulo).isEmpty()) << codigo.toStdString();
    EXPECT_EQ(sumas[i++], QStringLiteral("Sumas y saldo %1 %2 %3")
                              .arg(importe(s.debe), importe(s.haber), importe(s.saldo)));
  }
  bool partida = false;
  for (int n = 2; n <= libro.paginas().size(); ++n) {
    const QString anterior = libro.linea(QStringLiteral("Suma anterior"), n);
    EXPECT_EQ(anterior.section(u' ', 2),
              libro.linea(QStringLiteral("Suma y sigue"), n - 1).section(u' ', 3));
    if (anterior.isEmpty()) continue;
    partida = true;
    EXPECT_TRUE(libro.paginas()[n - 1].join(u'|').contains(u"(continuación)"));
  }
  EXPECT_TRUE(partida);

  Impreso marzo(*libros, QStringLiteral("May1.rpt"),
                QStringLiteral("{SqlDiarioPrincipal.Subcuenta}='57200001' and "
                               "{SqlDiarioPrincipal.Fecha} >= date(2024,3,1) and "
                               "{SqlDiarioPrincipal.Fecha} <= date(2024,3,31)"));
  EXPECT_TRUE(marzo.lineas().filter(QStringLiteral("/02/2024")).isEmpty());
  EXPECT_TRUE(marzo.linea(QStringLiteral("Sumas y saldo"))
                  .endsWith(importe(saldos[QStringLiteral("57200001")].saldo)));
}

TEST_F(Trimestre, plan) {
  const QString seleccion = entreSubcuentas(QStringLiteral("{SqlSubcuentas con saldo.Subcuenta}"),
                                            QStringLiteral("40000002"), QStringLiteral("57999999"));
  for (const char* plantilla :
       {"SubRed", "SubAmp", "SubSal", "SubCtaRed", "SubCtaAmp", "SubCtaSal"}) {
    const QString nombre = QString::fromLatin1(plantilla);
    Impreso libro(*libros, nombre + QStringLiteral(".rpt"), seleccion);
    for (const auto& [codigo, s] : saldos) {
      QString esperada = codigo + u' ' + s.titulo;
      if (nombre.endsWith(u"Sal")) esperada += u' ' + partes(s);
      const bool entra = codigo >= u"40000002" && codigo <= u"57999999";
      EXPECT_EQ(libro.linea(codigo), entra ? esperada : QString()) << plantilla;
    }
    EXPECT_EQ(libro.linea(QStringLiteral("430 ")).isEmpty(), !nombre.contains(u"Cta")) << plantilla;
    if (nombre == u"SubCtaSal") {
      const Saldo clientes = suma([](const QString& c) { return c.startsWith(u"430"); });
      EXPECT_TRUE(libro.linea(QStringLiteral("Total 430"))
                      .startsWith(QStringLiteral("Total 430 ") + importe(clientes.debe)));
    }
  }
}

TEST_F(Trimestre, resultadosYBalance) {
  const auto grupo = [](const char* primeros) {
    return suma([=](const QString& c) { return QString::fromLatin1(primeros).contains(c[0]); });
  };
  for (int n = 1; n <= 4; ++n) {
    Impreso resultados(*libros, QStringLiteral("PerdGanN%1.rpt").arg(n),
                       entreMeses(QStringLiteral("{SqlPerdidasyGanancias.Mes}"),
                                  QStringLiteral("1"), QStringLiteral("12")),
                       QStringLiteral("todo"));
    EXPECT_EQ(
        resultados.linea(QStringLiteral("Totales")),
        QStringLiteral("Totales %1 %2").arg(importe(grupo("6").saldo), importe(-grupo("7").saldo)));
    EXPECT_EQ(resultados.linea(QStringLiteral("Resultado (")),
              QStringLiteral("Resultado (ingresos menos gastos) ") + importe(-grupo("67").saldo));

    Impreso balance(
        *libros, QStringLiteral("BalSitN%1.rpt").arg(n),
        entreMeses(QStringLiteral("{SqlBalance.Mes}"), QStringLiteral("1"), QStringLiteral("12")),
        QStringLiteral("todo"));
    EXPECT_EQ(balance.linea(QStringLiteral("Total Activo")),
              QStringLiteral("Total Activo ") + importe(grupo("23").saldo));
    EXPECT_EQ(balance.linea(QStringLiteral("Total Pasivo")),
              QStringLiteral("Total Pasivo ") + importe(-grupo("145").saldo));
    EXPECT_EQ(balance.linea(QStringLiteral("Diferencia")),
              QStringLiteral("Diferencia entre activo y pasivo ") + importe(grupo("12345").saldo));
    if (n < 4) continue;
    for (const auto& [codigo, s] : saldos) {
      Impreso& libro = codigo < u"6" ? balance : resultados;
      const bool deudor = codigo[0] == u'2' || codigo[0] == u'3' || codigo[0] == u'6';
      EXPECT_EQ(libro.linea(codigo),
                codigo + u' ' + s.titulo + u' ' + importe(deudor ? s.saldo : -s.saldo));
    }
  }
}

TEST_F(Trimestre, sinFilasSaleUnaPagina) {
  Impreso libro(
      *libros, QStringLiteral("SumSalN4.rpt"),
      QStringLiteral("{Diario.Subcuenta} >= '9' and {Diario.Subcuenta} <= '1' and {@mes} >= 12 "
                     "and {@Mes} <= 01"));
  ASSERT_EQ(libro.paginas().size(), 1);
  EXPECT_EQ(libro.linea(QStringLiteral("Totales")), QStringLiteral("Totales 0,00 0,00 0,00 0,00"));
}

TEST_F(Trimestre, loQueFallaTieneNumeroYNoMuestraNada) {
  struct Quince : Reloj {};
  const QString buena = carpetaImpresos() + QStringLiteral("SumSalN4.rpt");
  const struct {
    QString plantilla, seleccion, fichero;
    QStringList impresoras;
    int numero;
  } casos[] = {
      {buena, {}, libros->rutaEmpresa(), {}, err::kSinImpresora},
      {carpetaImpresos() + QStringLiteral("NoEsta.rpt"),
       {},
       libros->rutaEmpresa(),
       {"PDF"},
       err::kFicheroNoEncontrado},
      {buena,
       QStringLiteral("{Diario.Subcuenta}>='D'Ors'"),
       libros->rutaEmpresa(),
       {"PDF"},
       err::kFormulaRechazada},
      {buena,
       QStringLiteral("{SqlIva.Base}>=1"),
       libros->rutaEmpresa(),
       {"PDF"},
       err::kFormulaRechazada},
      {buena,
       {},
       libros->dirDatos() + QStringLiteral("Nada\\Conta.MDB"),
       {"PDF"},
       err::kBaseNoEncontrada},
  };
  for (const auto& c : casos) {
    const Quince reloj;
    Informe informe(libros->motor, reloj,
                    {[&] { return c.impresoras; },
                     [](const auto&, const QString&) { ADD_FAILURE() << "se ha mostrado"; }});
    informe.ReportFileName = c.plantilla;
    informe.SelectionFormula = c.seleccion;
    informe.DataFiles(0) = c.fichero;
    try {
      informe.PrintReport();
      ADD_FAILURE() << c.numero;
    } catch (const ErrorEjecucion& e) {
      EXPECT_EQ(e.numero(), c.numero) << e.what();
    }
  }
}

}  // namespace
