// Every book of the quarter through its dialog, by the keyboard, and read page by page from the PDF
// that the preview saves.
#include "escenarios/librosimpresos.h"

namespace {

class Libreria : public LibrosImpresos {
 protected:
  Libreria() {
    for (const QStringList& f : leeCsv("trimestre/saldos-trimestre.csv"))
      if (f[0] != "Total") saldos[f[0]] = {{}, numero(f[1]), numero(f[2]), numero(f[3])};
    for (const QStringList& f : leeCsv("trimestre/subcuentas.csv"))
      if (saldos.count(f[0])) saldos[f[0]].titulo = f[1];
    for (const QStringList& f : leeCsv("trimestre/diario-trimestre.csv")) {
      diario.push_back({f[0].toInt(), f[1], f[2], f[3], numero(f[4]) - numero(f[5])});
      if (f[1].mid(3, 2) == "01") deEnero.push_back(diario.back());
    }
  }

  std::vector<Linea> diario, deEnero;
  Saldos saldos;
  const QString soloEnero = "Desde : 01-Enero ~ Hasta : 01-Enero";
};

TEST_F(Libreria, Diario) {
  LibroImpreso libro, parte;
  dialogo("MnuImprimirDiario", "Imprimir diario", [&](Teclado& t) {
    EXPECT_EQ(t.textoDe("TxtAsientoHasta"), "9999999999999");
    libro = lanza(t, "Listado de diario", ano());
    t.enfoca("TxtHasta");
    t.entra("3101");
    EXPECT_EQ(t.textoDe("TxtHasta"), "31/01/2024");
    t.teclea("a2b");
    EXPECT_EQ(static_cast<Formulario&>(t.forma()).pitidos(), 2);
    t.intro();
    t.entra("3");
    EXPECT_EQ(t.enfocado(), "CmdAceptar");
    parte = lanza(t, "Listado de diario", "Desde : 01/01/2024 ~ Hasta : 31/01/2024");
    t.pulsa("CmdCancelar");
  });
  miraDiario(libro, diario);
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
    todos = lanza(t, "Listado de libro Mayor", ano());
    t.pulsa("CmdCancelar");
  };
  t->escribe("TxtSubcuenta", "57200001");
  dialogo("MnuExtractos", "Extracto de la subcuenta " + saldos["57200001"].titulo + " - 57200001",
          [&](Teclado& extracto) {
            guion.esperaDialogo("FrmExtractos", [&](Teclado& uno) {
              EXPECT_EQ(uno.forma().windowTitle(), "Edicion de libro mayor");
              EXPECT_EQ(uno.textoDe("TxtSubcuenta"), "57200001");
              uno.entra("0103");
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
  for (const Linea& l : diario) {
    if (l.subcuenta == "57200001" && l.fecha.mid(3, 2) < "03") anterior += l.importe;
  }
  EXPECT_EQ(marzo.linea("Saldo anterior"), "Saldo anterior " + impreso(anterior));
  EXPECT_EQ(marzo.linea("Sumas y saldo").section(' ', -1), impreso(saldos["57200001"].saldo));
  miraMayor(todos, saldos);
  const int llevadas = miraSumaYSigue(todos);
  EXPECT_GT(llevadas, 0);
  EXPECT_EQ(todos.lineas().filter("(continuación)").size(), llevadas);
}

TEST_F(Libreria, SumasYSaldos) {
  const Saldos enero = saldosDe(deEnero);
  dialogo("MnuSumasysaldos", "Sumas y saldos", [&](Teclado& t) {
    // Enter goes on from options, texts and lists alike.
    EXPECT_EQ(t.enfocado(), "OptNivel_2");
    for (const char* siguiente : {"TxtDesde", "TxtHasta", "TxtDesdef", "TxtHastaf", "CmdAceptar"}) {
      t.intro();
      EXPECT_EQ(t.enfocado(), siguiente);
    }
    const QString titulo = "Listado de sumas y saldos ";
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "000999");
    miraSumas(lanza(t, titulo + "Cuentas", meses), saldos, 3, "");
    t.elige("TxtHastaf", "01-Enero");
    miraSumas(lanza(t, titulo + "Cuentas", soloEnero), enero, 3, "");
    t.elige("TxtDesdef", "12-Diciembre");
    const auto vacio = lanza(t, titulo + "Cuentas", "Desde : 12-Diciembre ~ Hasta : 01-Enero");
    miraSumas(vacio, {}, 3, "");
    EXPECT_FALSE(vacio.linea("No hay nada entre los límites pedidos").isEmpty());
    t.elige("TxtDesdef", "01-Enero");
    t.marca("OptNivel_3");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "0000000099999999");
    t.escribe("TxtDesde", "43000002");
    miraSumas(lanza(t, titulo + "Subcuentas", soloEnero), enero, 8, "43000002");
    // The boxes stay, and the months don't reach the upper levels.
    t.marca("OptNivel_0");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "4300000299999999");
    t.escribe("TxtDesde", "5");
    miraSumas(lanza(t, titulo + "Nivel 1", soloEnero), saldos, 1, "5");
    t.marca("OptNivel_1");
    EXPECT_EQ(t.textoDe("TxtDesde") + t.textoDe("TxtHasta"), "599999999");
    t.escribe("TxtDesde", "43");
    const auto nivel2 = lanza(t, titulo + "Nivel 2", soloEnero);
    miraSumas(nivel2, saldos, 2, "43");
    EXPECT_TRUE(nivel2.linea("Desde : ")
                    .endsWith(" Importes de todo el ejercicio Códigos : 43 a 99999999"));
    t.pulsa("CmdCancelar");
  });
}

TEST_F(Libreria, BalanceYResultados) {
  const struct {
    const char *entrada, *ventana, *titulo, *grupos;
    bool balance;
  } casos[] = {{"MnuBalanceSituacion", "Balance de situación (General)", "Balance de situación",
                "12345", true},
               // It opens under the title of another book.
               {"MnuPerdidasyGanancias", "Explotación (Perdidas y Ganancias)", "Acumulados de IVA",
                "67", false}};
  for (const auto& c : casos) {
    dialogo(c.entrada, c.ventana, [&](Teclado& t) {
      LibroImpreso libro;
      const auto mira = [&](const Saldos& de, const QString& limites) {
        libro = lanza(t, c.titulo, limites);
        miraTotales(libro, de, c.balance);
      };
      mira(saldos, meses);  // at the first level, without being asked for
      EXPECT_TRUE(libro.lineas().filter("00001 ").isEmpty());
      for (const char* nivel : {"OptTipo_1", "OptTipo_2", "OptTipo_3"}) {
        t.marca(nivel);
        mira(saldos, meses);
      }
      miraSubcuentas(libro, saldos, c.grupos);
      t.elige("TxtHasta", "01-Enero");
      mira(saldosDe(deEnero), soloEnero);
      t.pulsa("CmdCancelar");
    });
  }
}

TEST_F(Libreria, Plan) {
  const auto limites = [&](Teclado& t) {
    t.entra("TxtSubcuentasDesde", "400.2");
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
