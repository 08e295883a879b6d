// Every book of the quarter through its dialog, read page by page from the PDF that the preview
// saves.
#include <map>

#include "accounts/registro.h"
#include "foundation/formato.h"
#include "journal/frmmenu.h"
#include "journal/registro.h"
#include "reports/registro.h"
#include "soporte/escenario.h"
#include "soporte/libroimpreso.h"
#include "soporte/libros.h"

namespace {

double numero(const QString& texto) {
  return Variant(texto).number();
}
QString importe(double x) {
  return Format(x, QStringLiteral("#,##0.00"));
}

struct Saldo {
  QString titulo;
  double debe = 0, haber = 0, saldo = 0;

  QString partes() const {
    const QString t = importe(debe) + u' ' + importe(haber);
    return saldo == 0 ? t : t + u' ' + importe(std::abs(saldo));
  }
  Saldo& operator+=(const Saldo& otro) {
    debe += otro.debe;
    haber += otro.haber;
    saldo += otro.saldo;
    return *this;
  }
};

class Libreria : public testing::Test {
 protected:
  static DatosEmpresa empresa() {
    DatosEmpresa datos = Escenario::empresaDePrueba();
    datos.NombreEmpresa = QStringLiteral("Comercial Ejemplo");
    datos.Ano = QStringLiteral("2024");
    datos.FechaCreacion = QStringLiteral("01/01/2024");
    datos.Nif = QStringLiteral("12345678");
    return datos;
  }

  Libreria() {
    altaSubcuentasTrimestre(*e.ctx.motor.Workspaces(0).OpenDatabase(e.ctx.sesion.rutaEmpresa()));
    asientaDiarioTrimestre(e.ctx.motor, e.ctx.sesion.rutaEmpresa());
    registraAccounts(*e.formularios);
    registraJournal(*e.formularios);
    registraReports(*e.formularios);
    ponPlantillas(e.ctx);
    for (const QStringList& f : leeCsv(QStringLiteral("trimestre/saldos-trimestre.csv"))) {
      if (f[0] != u"Total") saldos[f[0]] = {{}, numero(f[1]), numero(f[2]), numero(f[3])};
    }
    for (const QStringList& f : leeCsv(QStringLiteral("trimestre/subcuentas.csv"))) {
      if (saldos.count(f[0])) saldos[f[0]].titulo = f[1];
    }
    menu = &e.abre<FrmMenu>();
  }

  Saldo suma(const QString& comienzos) const {
    Saldo total;
    for (const auto& [codigo, uno] : saldos) {
      for (const QString& comienzo : comienzos.split(u' '))
        if (codigo.startsWith(comienzo)) total += uno;
    }
    return total;
  }

  // The books that a dialog gives, one for each step that fills it in.
  std::vector<LibroImpreso> imprime(const char* entrada, const QString& dialogo,
                                    const std::vector<std::function<void(Teclado&)>>& pasos) {
    std::vector<LibroImpreso> libros;
    e.guion.esperaDialogo(dialogo, [&](Teclado& t) {
      for (const auto& paso : pasos) {
        paso(t);
        libros.push_back(lanza(t));
      }
      t.pulsa("CmdCancelar");
    });
    menu->findChild<QAction*>(QString::fromLatin1(entrada))->trigger();
    return libros;
  }
  LibroImpreso lanza(Teclado& t) {
    t.pulsa("CmdAceptar");
    LibroImpreso libro = leeVista(e.guion);
    activar(t.forma());
    return libro;
  }

  // What stands on each page of any book: whose it is, and which page.
  static void miraCabeceras(const LibroImpreso& libro, const QString& limites) {
    const auto total = libro.paginas.size();
    ASSERT_GT(total, 0);
    for (int n = 1; n <= total; ++n) {
      const QString pagina = libro.paginas[n - 1].join(u'|');
      EXPECT_TRUE(libro.paginas[n - 1].value(0).startsWith(u"Comercial Ejemplo"));
      EXPECT_TRUE(pagina.contains(u"Ejercicio 2024"));
      EXPECT_TRUE(pagina.contains(u"N.I.F. 12345678"));
      EXPECT_TRUE(pagina.contains(limites)) << qPrintable(pagina.left(300));
      EXPECT_TRUE(pagina.contains(QStringLiteral("Página %1 de %2").arg(n).arg(total)));
    }
  }
  // What a page hands on is what the next begins with.
  static int miraSumaYSigue(const LibroImpreso& libro) {
    int llevadas = 0;
    for (int n = 2; n <= libro.paginas.size(); ++n) {
      const QString sigue = libro.linea(QStringLiteral("Suma y sigue"), n - 1);
      EXPECT_EQ(libro.linea(QStringLiteral("Suma anterior"), n).section(u' ', 2),
                sigue.section(u' ', 3))
          << n;
      if (!sigue.isEmpty()) ++llevadas;
    }
    return llevadas;
  }

  Escenario e{Escenario::Empresa, empresa()};
  FrmMenu* menu = nullptr;
  std::map<QString, Saldo> saldos;
};

const QString kAno = QStringLiteral("Desde : 01/01/2024 ~ Hasta : 31/12/2024");
const QString kMeses = QStringLiteral("Desde : 01-Enero ~ Hasta : 12-Diciembre");

TEST_F(Libreria, Diario) {
  const auto libros = imprime("MnuImprimirDiario", QStringLiteral("FrmDiarioImprimir"),
                              {[](Teclado&) {},
                               [](Teclado& t) {
                                 t.escribe("TxtAsientoDesde", QStringLiteral("5"));
                                 t.escribe("TxtAsientoHasta", QStringLiteral("7"));
                               }});
  const LibroImpreso& diario = libros[0];
  miraCabeceras(diario, kAno);
  EXPECT_EQ(miraSumaYSigue(diario), diario.paginas.size() - 1);
  // Line by line, and on each page the sum of what has been printed so far.
  auto linea = [filas = leeCsv(QStringLiteral("trimestre/diario-trimestre.csv")), i = 0]() mutable {
    return i < filas.size() ? filas[i++] : QStringList();
  };
  QStringList esperada = linea();
  double debe = 0, haber = 0;
  for (int n = 1; n <= diario.paginas.size(); ++n) {
    for (const QString& impresa : diario.paginas[n - 1]) {
      if (esperada.isEmpty()) break;
      if (!impresa.startsWith(esperada.mid(0, 3).join(u' ') + u' ')) continue;
      const double d = esperada[4].isEmpty() ? 0 : numero(esperada[4]);
      const double h = esperada[5].isEmpty() ? 0 : numero(esperada[5]);
      EXPECT_TRUE(impresa.endsWith(u' ' + importe(d + h))) << qPrintable(impresa);
      debe += d;
      haber += h;
      esperada = linea();
    }
    if (n == diario.paginas.size()) break;
    EXPECT_EQ(diario.linea(QStringLiteral("Suma y sigue"), n),
              QStringLiteral("Suma y sigue %1 %2").arg(importe(debe), importe(haber)));
  }
  EXPECT_TRUE(esperada.isEmpty()) << qPrintable(esperada.join(u';'));
  EXPECT_EQ(diario.linea(QStringLiteral("Total diario")),
            QStringLiteral("Total diario %1 %2").arg(importe(debe), importe(haber)));
  EXPECT_EQ(libros[1].lineas().filter(QStringLiteral("Total asiento")).size(), 3);
}

TEST_F(Libreria, Mayor) {
  std::vector<LibroImpreso> libros;
  e.guion.esperaDialogo(QStringLiteral("FrmExtractosPantalla"), [&](Teclado& extracto) {
    e.guion.esperaDialogo(QStringLiteral("FrmExtractos"), [&](Teclado& uno) {
      libros.push_back(lanza(uno));
      e.guion.esperaDialogo(QStringLiteral("FrmExtractoEntraCtas"), [&](Teclado& todos) {
        todos.escribe("TxtSubcuentaDesde", QStringLiteral("1."));
        todos.escribe("TxtSubcuentaHasta", QStringLiteral("79999999"));
        libros.push_back(lanza(todos));
        todos.pulsa("CmdCancelar");
      });
      uno.pulsa("CmdSeleccion");
    });
    extracto.pulsa("CmdImpresos");
    extracto.pulsa("CmdSalir");
  });
  Teclado t(*menu);
  t.escribe("TxtSubcuenta", QStringLiteral("57200001"));
  t.tecla(Qt::Key_F3);
  ASSERT_EQ(libros.size(), 2u);
  for (const LibroImpreso& libro : libros) miraCabeceras(libro, kAno);

  const Saldo& banco = saldos[QStringLiteral("57200001")];
  EXPECT_EQ(libros[0].linea(QStringLiteral("Sumas y saldo")),
            QStringLiteral("Sumas y saldo %1 %2 %3")
                .arg(importe(banco.debe), importe(banco.haber), importe(banco.saldo)));
  const QStringList sumas = libros[1].lineas().filter(QStringLiteral("Sumas y saldo"));
  ASSERT_EQ(static_cast<size_t>(sumas.size()), saldos.size());
  qsizetype i = 0;
  for (const auto& [codigo, s] : saldos) {
    EXPECT_FALSE(libros[1].linea(codigo + u' ' + s.titulo).isEmpty()) << qPrintable(codigo);
    EXPECT_EQ(sumas[i++], QStringLiteral("Sumas y saldo %1 %2 %3")
                              .arg(importe(s.debe), importe(s.haber), importe(s.saldo)));
  }
  EXPECT_GT(miraSumaYSigue(libros[1]), 0);
}

TEST_F(Libreria, SumasYSaldos) {
  const auto nivel = [](const char* opcion, const char* desde, const char* hasta) {
    return [=](Teclado& t) {
      t.marca(opcion);
      t.escribe("TxtDesde", QString::fromLatin1(desde));
      t.escribe("TxtHasta", QString::fromLatin1(hasta));
    };
  };
  const auto libros = imprime("MnuSumasysaldos", QStringLiteral("FrmSumasSaldosImpresos"),
                              {[](Teclado&) {}, [](Teclado& t) { t.marca("OptNivel_3"); },
                               nivel("OptNivel_0", "0", "9"), nivel("OptNivel_1", "00", "99")});
  const int digitos[] = {3, 8, 1, 2};
  const Saldo todo = suma(QString());
  for (size_t i = 0; i < libros.size(); ++i) {
    miraCabeceras(libros[i], kMeses);
    for (const auto& [codigo, uno] : saldos) {
      const QString grupo = codigo.left(digitos[i]);
      EXPECT_TRUE(libros[i].linea(grupo + u' ').endsWith(u' ' + suma(grupo).partes()))
          << qPrintable(libros[i].linea(grupo + u' '));
    }
    EXPECT_TRUE(
        libros[i]
            .linea(QStringLiteral("Totales"))
            .startsWith(
                QStringLiteral("Totales %1 %2 ").arg(importe(todo.debe), importe(todo.haber))));
  }
}

TEST_F(Libreria, BalanceYResultados) {
  std::vector<std::function<void(Teclado&)>> niveles;
  for (const char* opcion : {"OptTipo_0", "OptTipo_1", "OptTipo_2", "OptTipo_3"})
    niveles.push_back([=](Teclado& t) { t.marca(opcion); });
  const auto balances =
      imprime("MnuBalanceSituacion", QStringLiteral("FrmBalanceImpresos"), niveles);
  const auto resultados =
      imprime("MnuPerdidasyGanancias", QStringLiteral("FrmPerdidasYGananciasImpresos"), niveles);
  for (size_t n = 0; n < 4; ++n) {
    miraCabeceras(balances[n], kMeses);
    miraCabeceras(resultados[n], kMeses);
    EXPECT_EQ(balances[n].linea(QStringLiteral("Total Activo")),
              QStringLiteral("Total Activo ") + importe(suma(QStringLiteral("2 3")).saldo));
    EXPECT_EQ(balances[n].linea(QStringLiteral("Total Pasivo")),
              QStringLiteral("Total Pasivo ") + importe(-suma(QStringLiteral("1 4 5")).saldo));
    EXPECT_EQ(resultados[n].linea(QStringLiteral("Resultado (")),
              QStringLiteral("Resultado (ingresos menos gastos) ") +
                  importe(-suma(QStringLiteral("6 7")).saldo));
  }
  for (const auto& [codigo, s] : saldos) {
    const LibroImpreso& libro = codigo < u"6" ? balances[3] : resultados[3];
    const bool deudor = QStringLiteral("236").contains(codigo[0]);
    EXPECT_EQ(libro.linea(codigo),
              codigo + u' ' + s.titulo + u' ' + importe(deudor ? s.saldo : -s.saldo));
  }
}

TEST_F(Libreria, Plan) {
  LibroImpreso libro;
  e.guion.esperaDialogo(QStringLiteral("FrmVisualizaPlan"), [&](Teclado& plan) {
    e.guion.esperaDialogo(QStringLiteral("FrmSubcuentasImpresos"), [&](Teclado& t) {
      t.marca("OptPlan_1");
      t.marca("OptOpciones_2");
      t.escribe("TxtSubcuentasDesde", QStringLiteral("10000001"));
      t.intro();
      t.teclea(saldos.rbegin()->first);
      t.tab();
      libro = lanza(t);
      t.pulsa("CmdCancelar");
    });
    plan.pulsa("CmdImpresos");
    plan.escape();
  });
  menu->findChild<QAction*>(QStringLiteral("MnuVisualizarPlan"))->trigger();
  miraCabeceras(libro, QString());
  EXPECT_EQ(libro.titulo, "Listado de Subcuentas");
  for (const auto& [codigo, s] : saldos) {
    EXPECT_EQ(libro.linea(codigo), codigo + u' ' + s.titulo + u' ' + s.partes());
    const QString cuenta = codigo.left(3);
    EXPECT_TRUE(
        libro.linea(QStringLiteral("Total ") + cuenta)
            .startsWith(QStringLiteral("Total %1 %2 ").arg(cuenta, importe(suma(cuenta).debe))));
  }
}

}  // namespace
