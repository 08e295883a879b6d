// Every book of the quarter through its dialog, by the keyboard, and read page by page from the PDF
// that the preview saves.
#include <map>

#include "common/formato.h"
#include "escenarios/herramientas.h"
#include "soporte/libroimpreso.h"
#include "soporte/textos.h"

namespace {

double numero(const QString& texto) {
  return texto.isEmpty() ? 0 : Variant(texto).number();
}
QString importe(double x) {
  return Format(x, "#,##0.00");
}

struct Saldo {
  QString titulo;
  double debe = 0, haber = 0, saldo = 0;

  QString sumas() const { return importe(debe) + ' ' + importe(haber); }
  QString partes() const { return saldo == 0 ? sumas() : sumas() + ' ' + importe(std::abs(saldo)); }
};
using Saldos = std::map<QString, Saldo>;

// Of the subcuentas that begin with any of some codes.
Saldo suma(const Saldos& saldos, const QString& comienzos) {
  Saldo total;
  for (const auto& [codigo, uno] : saldos) {
    for (const QString& comienzo : comienzos.split(' ')) {
      if (!codigo.startsWith(comienzo)) continue;
      total.debe += uno.debe;
      total.haber += uno.haber;
      total.saldo += uno.saldo;
    }
  }
  return total;
}

class Libreria : public DiarioDelTrimestre {
 protected:
  Libreria() {
    ponPlantillas(ctx);
    for (const QStringList& f : leeCsv("trimestre/saldos-trimestre.csv"))
      if (f[0] != "Total") saldos[f[0]] = {{}, numero(f[1]), numero(f[2]), numero(f[3])};
    for (const QStringList& f : leeCsv("trimestre/subcuentas.csv"))
      if (saldos.count(f[0])) saldos[f[0]].titulo = f[1];
    for (const QStringList& f : diario) {
      if (f[1].mid(3, 2) != "01") continue;
      enero[f[2]].debe += numero(f[4]);
      enero[f[2]].haber += numero(f[5]);
      enero[f[2]].saldo += numero(f[4]) - numero(f[5]);
    }
  }

  void dialogo(const char* entrada, const QString& titulo,
               const std::function<void(Teclado&)>& paso) {
    herramienta(entrada, [&](Teclado& t) {
      EXPECT_EQ(t.forma().windowTitle(), titulo);
      paso(t);
    });
  }
  // The book that a dialog gives, with what stands on each page of any: whose it is, of when, and
  // which page.
  LibroImpreso lanza(Teclado& t, const QString& titulo, const QString& limites) {
    t.pulsa("CmdAceptar");
    LibroImpreso libro = leeVista(guion);
    activar(t.forma());
    EXPECT_EQ(libro.titulo, titulo);
    const auto total = libro.paginas.size();
    EXPECT_GT(total, 0);
    for (int n = 1; n <= total; ++n) {
      const QString pagina = libro.paginas[n - 1].join('|');
      EXPECT_TRUE(pagina.startsWith("Comercial Ejemplo"));
      for (const QString& parte : {limites, QString("Ejercicio 2024"), QString("N.I.F. 12345678"),
                                   QString("02/04/2024 Página %1 de %2").arg(n).arg(total)})
        EXPECT_TRUE(pagina.contains(parte)) << qPrintable(parte);
    }
    return libro;
  }
  // What a page hands on is what the next begins with; how often it does.
  static int miraSumaYSigue(const LibroImpreso& libro) {
    int llevadas = 0;
    for (int n = 2; n <= libro.paginas.size(); ++n) {
      const QString sigue = libro.linea("Suma y sigue", n - 1);
      EXPECT_EQ(libro.linea("Suma anterior", n).section(' ', 2), sigue.section(' ', 3)) << n;
      llevadas += !sigue.isEmpty();
    }
    return llevadas;
  }

  const QList<QStringList> diario = leeCsv("trimestre/diario-trimestre.csv");
  Saldos saldos, enero;
  const QString ano = "Desde : 01/01/2024 ~ Hasta : 31/12/2024";
  const QString meses = "Desde : 01-Enero ~ Hasta : 12-Diciembre";
  const QString soloEnero = "Desde : 01-Enero ~ Hasta : 01-Enero";
};

TEST_F(Libreria, Diario) {
  LibroImpreso libro, parte;
  dialogo("MnuImprimirDiario", "Imprimir diario", [&](Teclado& t) {
    EXPECT_EQ(t.textoDe("TxtAsientoHasta"), "9999999999999");
    libro = lanza(t, "Listado de diario", ano);
    t.enfoca("TxtHasta");
    t.teclea("3101");
    t.intro();
    EXPECT_EQ(t.textoDe("TxtHasta"), "31/01/2024");
    t.teclea("a2b");
    EXPECT_EQ(static_cast<Formulario&>(t.forma()).pitidos(), 2);
    t.intro();
    t.teclea("3");
    t.intro();
    EXPECT_EQ(t.enfocado(), "CmdAceptar");
    parte = lanza(t, "Listado de diario", "Desde : 01/01/2024 ~ Hasta : 31/01/2024");
    t.pulsa("CmdCancelar");
  });
  EXPECT_EQ(miraSumaYSigue(libro), libro.paginas.size() - 1);
  // Line by line, and on each page the sum of what has been printed so far.
  qsizetype i = 0;
  Saldo hasta;
  QString encabezado;  // of the asiento
  for (int n = 1; n <= libro.paginas.size(); ++n) {
    for (const QString& impresa : libro.paginas[n - 1]) {
      if (impresa.startsWith("Asiento ")) encabezado = impresa;
      if (i == diario.size() ||
          !encabezado.startsWith("Asiento " + diario[i].mid(0, 2).join(' ')) ||
          !impresa.startsWith(diario[i][2] + ' '))
        continue;
      EXPECT_TRUE(impresa.contains(' ' + diario[i][3] + ' ')) << qPrintable(impresa);
      const double debe = numero(diario[i][4]), haber = numero(diario[i][5]);
      EXPECT_TRUE(impresa.endsWith(' ' + importe(debe + haber))) << qPrintable(impresa);
      hasta.debe += debe;
      hasta.haber += haber;
      ++i;
    }
    const QString total = n == libro.paginas.size() ? "Total diario" : "Suma y sigue";
    EXPECT_EQ(libro.linea(total, n), total + ' ' + hasta.sumas());
  }
  EXPECT_EQ(i, 312);
  EXPECT_TRUE(libro.lineas().filter("Descuadrado").isEmpty());
  const QStringList asientos = libro.lineas().filter("Total asiento");
  EXPECT_EQ(asientos.size(), 120);
  EXPECT_EQ(asientos[0], "Total asiento 1 60.000,00 60.000,00");
  EXPECT_EQ(parte.lineas().filter("Total asiento"), asientos.mid(1, 2));
}

TEST_F(Libreria, Mayor) {
  LibroImpreso marzo, todos;
  const auto entreCuentas = [&](Teclado& t) {
    EXPECT_EQ(t.forma().windowTitle(), "Impresion entre cuentas");
    t.escribe("TxtSubcuentaDesde", "1.");
    t.escribe("TxtSubcuentaHasta", "79999999");
    todos = lanza(t, "Listado de libro Mayor", ano);
    t.pulsa("CmdCancelar");
  };
  t->escribe("TxtSubcuenta", "57200001");
  dialogo("MnuExtractos", "Extracto de la subcuenta " + saldos["57200001"].titulo + " - 57200001",
          [&](Teclado& extracto) {
            guion.esperaDialogo("FrmExtractos", [&](Teclado& uno) {
              EXPECT_EQ(uno.forma().windowTitle(), "Edicion de libro mayor");
              EXPECT_EQ(uno.textoDe("TxtSubcuenta"), "57200001");
              uno.teclea("0103");
              uno.intro();
              EXPECT_EQ(uno.textoDe("TxtDesde"), "01/03/2024");
              marzo =
                  lanza(uno, "Listado de libro Mayor", "Desde : 01/03/2024 ~ Hasta : 31/12/2024");
              guion.esperaDialogo("FrmExtractoEntraCtas", entreCuentas);
              uno.pulsa("CmdSeleccion");
            });
            extracto.tecla(Qt::Key_P, Qt::ControlModifier);
            extracto.pulsa("CmdSalir");
          });
  // The balance is that of the whole year, whatever the limits.
  EXPECT_TRUE(marzo.lineas().filter("/02/2024").isEmpty());
  double anterior = 0;
  for (const QStringList& f : diario) {
    if (f[2] == "57200001" && f[1].mid(3, 2) < "03") anterior += numero(f[4]) - numero(f[5]);
  }
  EXPECT_EQ(marzo.linea("Saldo anterior"), "Saldo anterior " + importe(anterior));
  EXPECT_TRUE(todos.lineas().filter("Saldo anterior").isEmpty());
  EXPECT_EQ(marzo.linea("Sumas y saldo").section(' ', -1), importe(saldos["57200001"].saldo));
  QStringList sumas;
  for (const auto& [codigo, s] : saldos) {
    EXPECT_FALSE(todos.linea(codigo + ' ' + s.titulo).isEmpty()) << qPrintable(codigo);
    sumas << "Sumas y saldo " + s.sumas() + ' ' + importe(s.saldo);
  }
  EXPECT_EQ(todos.lineas().filter("Sumas y saldo"), sumas);
  const int llevadas = miraSumaYSigue(todos);
  EXPECT_GT(llevadas, 0);
  EXPECT_EQ(todos.lineas().filter("(continuación)").size(), llevadas);
}

TEST_F(Libreria, SumasYSaldos) {
  const auto mira = [&](const LibroImpreso& libro, const Saldos& de, int digitos,
                        const QString& desde) {
    Saldos grupos;
    for (const auto& [codigo, uno] : de) grupos[codigo.left(digitos)] = {};
    Saldo total;
    double deudor = 0, acreedor = 0;
    for (auto& [grupo, s] : grupos) {
      const QString linea = libro.linea(grupo + ' ');
      EXPECT_EQ(linea.isEmpty(), grupo < desde) << qPrintable(linea);
      if (grupo < desde) continue;
      s = suma(de, grupo);
      EXPECT_TRUE(linea.endsWith(' ' + s.partes())) << qPrintable(linea);
      total.debe += s.debe;
      total.haber += s.haber;
      (s.saldo > 0 ? deudor : acreedor) += std::abs(s.saldo);
    }
    EXPECT_EQ(libro.linea("Totales"),
              "Totales " + total.sumas() + ' ' + importe(deudor) + ' ' + importe(acreedor));
  };
  dialogo("MnuSumasysaldos", "Sumas y saldos", [&](Teclado& t) {
    // Enter goes on from options, texts and lists alike.
    EXPECT_EQ(t.enfocado(), "OptNivel_2");
    for (const char* siguiente : {"TxtDesde", "TxtHasta", "TxtDesdef", "TxtHastaf", "CmdAceptar"}) {
      t.intro();
      EXPECT_EQ(t.enfocado(), siguiente);
    }
    const QString titulo = "Listado de sumas y saldos ";
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "000999");
    mira(lanza(t, titulo + "Cuentas", meses), saldos, 3, "");
    t.elige("TxtHastaf", "01-Enero");
    mira(lanza(t, titulo + "Cuentas", soloEnero), enero, 3, "");
    t.elige("TxtDesdef", "12-Diciembre");
    const auto vacio = lanza(t, titulo + "Cuentas", "Desde : 12-Diciembre ~ Hasta : 01-Enero");
    mira(vacio, {}, 3, "");
    EXPECT_FALSE(vacio.linea("No hay nada entre los límites pedidos").isEmpty());
    t.elige("TxtDesdef", "01-Enero");
    t.marca("OptNivel_3");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "0000000099999999");
    t.escribe("TxtDesde", "43000002");
    mira(lanza(t, titulo + "Subcuentas", soloEnero), enero, 8, "43000002");
    // The boxes stay, and the months don't reach the upper levels.
    t.marca("OptNivel_0");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "4300000299999999");
    t.escribe("TxtDesde", "5");
    mira(lanza(t, titulo + "Nivel 1", soloEnero), saldos, 1, "5");
    t.marca("OptNivel_1");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "599999999");
    t.escribe("TxtDesde", "43");
    const auto nivel2 = lanza(t, titulo + "Nivel 2", soloEnero);
    mira(nivel2, saldos, 2, "43");
    EXPECT_TRUE(nivel2.linea("Desde : ")
                    .endsWith(" Importes de todo el ejercicio Códigos : 43 a 99999999"));
    t.pulsa("CmdCancelar");
  });
}

TEST_F(Libreria, BalanceYResultados) {
  using Totales = std::function<QStringList(const Saldos&)>;
  const Totales deBalance = [](const Saldos& de) {
    return QStringList{"Total Activo " + importe(suma(de, "2 3").saldo),
                       "Total Pasivo " + importe(-suma(de, "1 4 5").saldo),
                       "Diferencia entre activo y pasivo " + importe(suma(de, "1 2 3 4 5").saldo)};
  };
  const Totales deResultados = [](const Saldos& de) {
    return QStringList{
        "Totales " + importe(suma(de, "6").saldo) + ' ' + importe(-suma(de, "7").saldo),
        "Resultado (ingresos menos gastos) " + importe(-suma(de, "6 7").saldo)};
  };
  const struct {
    const char *entrada, *ventana, *titulo;
    const char* grupos;
    Totales totales;
  } casos[] = {{"MnuBalanceSituacion", "Balance de situación (General)", "Balance de situación",
                "12345", deBalance},
               // It opens under the title of another book.
               {"MnuPerdidasyGanancias", "Explotación (Perdidas y Ganancias)", "Acumulados de IVA",
                "67", deResultados}};
  for (const auto& c : casos) {
    dialogo(c.entrada, c.ventana, [&](Teclado& t) {
      LibroImpreso libro;
      const auto mira = [&](const Saldos& de, const QString& limites) {
        libro = lanza(t, c.titulo, limites);
        for (const QString& linea : c.totales(de))
          EXPECT_TRUE(libro.lineas().contains(linea)) << qPrintable(linea);
      };
      mira(saldos, meses);  // at the first level, without being asked for
      EXPECT_TRUE(libro.lineas().filter("00001 ").isEmpty());
      for (const char* nivel : {"OptTipo_1", "OptTipo_2", "OptTipo_3"}) {
        t.marca(nivel);
        mira(saldos, meses);
      }
      for (const auto& [codigo, s] : saldos) {
        if (!QString(c.grupos).contains(codigo[0])) continue;
        const bool deudor = QString("236").contains(codigo[0]);
        EXPECT_EQ(libro.linea(codigo),
                  codigo + ' ' + s.titulo + ' ' + importe(deudor ? s.saldo : -s.saldo));
      }
      t.elige("TxtHasta", "01-Enero");
      mira(enero, soloEnero);
      // The regularisation can be reached from the balance once there is one.
      if (const auto* pg = t.forma().findChild<QPushButton*>("CmdPG")) {
        EXPECT_EQ(pg->isEnabled(), formularios->existe("FrmPerdidasyGanacias"));
      }
      t.pulsa("CmdCancelar");
    });
  }
}

TEST_F(Libreria, Plan) {
  const auto limites = [&](Teclado& t) {
    t.escribe("TxtSubcuentasDesde", "400.2");
    t.intro();
    EXPECT_EQ(t.textoDe("TxtSubcuentasDesde"), "40000002");
    EXPECT_EQ(t.textoDe("LblDesde"), saldos["40000002"].titulo);
    EXPECT_EQ(t.enfocado(), "TxtSubcuentasHasta");
    // One that isn't there is looked for in the plan.
    t.teclea("572.9");
    guion.esperaDialogo("FrmVisualizaPlan", [&](Teclado& plan) {
      EXPECT_EQ(ctx.sesion.CodigoAccion, 31);
      plan.escape();
    });
    t.tab();
    EXPECT_EQ(t.enfocado(), "TxtSubcuentasHasta");
    EXPECT_TRUE(ctx.sesion.ValorElegido.isEmpty());
    t.teclea("572.1");
    t.tab();
    EXPECT_EQ(t.textoDe("LblHasta"), saldos["57200001"].titulo);
  };
  const auto imprime = [&](Teclado& t) {
    EXPECT_EQ(t.forma().windowTitle(), "Imprimir Plan");
    limites(t);
    for (const char* plan : {"OptPlan_0", "OptPlan_1"}) {
      for (const char* tipo : {"OptOpciones_0", "OptOpciones_1", "OptOpciones_2"}) {
        t.marca(plan);
        t.marca(tipo);
        const LibroImpreso libro = lanza(t, "Listado de Subcuentas", "");
        const bool conSaldos = tipo == QString("OptOpciones_2"), conCuentas = plan[8] == '1';
        for (const auto& [codigo, s] : saldos) {
          const bool entra = codigo >= "40000002" && codigo <= "57200001";
          const QString linea = codigo + ' ' + s.titulo + (conSaldos ? ' ' + s.partes() : "");
          EXPECT_EQ(libro.linea(codigo), entra ? linea : QString()) << plan << tipo;
        }
        EXPECT_EQ(libro.linea("430 ").isEmpty(), !conCuentas);
        EXPECT_EQ(libro.lineas().filter("Dirección").isEmpty(), tipo != QString("OptOpciones_1"));
        EXPECT_EQ(libro.linea("Total 430").section(' ', 0, 3),
                  conSaldos && conCuentas ? "Total 430 " + suma(saldos, "430").sumas() : "");
      }
    }
    t.pulsa("CmdCancelar");
  };
  dialogo("MnuVisualizarPlan", "Visualizar el plan de subcuentas", [&](Teclado& plan) {
    guion.esperaDialogo("FrmSubcuentasImpresos", imprime);
    plan.pulsa("CmdImpresos");
    plan.escape();
  });
}

}  // namespace
