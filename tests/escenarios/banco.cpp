// The bank's statement against the quarter's journal, and the list of what is to be looked over in
// its books, by keys.
#include "escenarios/cuaderno.h"
#include "escenarios/herramientas.h"
#include "oficial/faltas.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/libroimpreso.h"

namespace {

const QString kExtracto = rutaDato("banco/extracto-norma43.txt");

class Banco : public DiarioDelTrimestre {
 protected:
  static const TablaHoja& tabla(const Teclado& d) { return d.control<TablaHoja>("GrdMovimientos"); }
  static int filas(const Teclado& d) { return tabla(d).model()->rowCount(); }
  // A column of the table, its rows one after the other.
  static QString columna(const Teclado& d, int numero) {
    QStringList textos;
    for (int f = 0; f < filas(d); ++f) textos << tabla(d).textoDe(f, numero);
    return textos.join(u' ');
  }
  void leeExtracto(Teclado& d, const QString& mensaje) {
    guion.esperaFichero(kExtracto);
    guion.esperaMensaje(mensaje, "Norma 43");
    d.mnemonico('L');
  }
  QString puntuadas(const QString& marca) {
    return valor("Select count(*) from Diario where Punteo='" + marca + "'");
  }
};

TEST_F(Banco, ElExtractoSeConciliaConElDiarioDelTrimestre) {
  herramienta("MnuNorma43", [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("LblCuadre"), "Lea un fichero del banco.");
    guion.esperaFichero(
        haceFichero(carpetaDatos() + "/malo.n43",
                    contenidoDe(kExtracto).replace("0000000238947", "0000000238948")));
    guion.esperaMensaje(
        "No se ha leído nada del fichero:\n"
        "Línea 24: dice un total al debe de 15553,97 y suman 15553,98",
        "Norma 43");
    d.mnemonico('L');
    EXPECT_EQ(d.textoDe("TxtCuenta"), "");
    leeExtracto(d, "Movimientos nuevos: 12. Ya leídos antes: 0.");
    EXPECT_EQ(d.textoDe("TxtCuenta"), "99910025110000123456");
    EXPECT_EQ(d.enfocado(), "TxtSubcuenta");
    d.entra("572.1");
    EXPECT_EQ(d.textoDe("LblSubcuenta"), "Banco Duero c/c");
    EXPECT_EQ(columna(d, 4), QStringList(9, "Propuesto").join(u' '));
    EXPECT_EQ(columna(d, 0),
              "17/01/2024 22/01/2024 22/01/2024 24/01/2024 24/01/2024 29/01/2024 "
              "31/01/2024 31/01/2024 31/01/2024");
    EXPECT_EQ(columna(d, 6),
              "17/01/2024 20/01/2024 20/01/2024 24/01/2024 24/01/2024 27/01/2024 "
              "31/01/2024 31/01/2024 31/01/2024");
    EXPECT_EQ(columna(d, 3), columna(d, 5));
    EXPECT_EQ(d.textoDe("LblCuadre"),
              "Al 31/01/2024 el banco dice 65.714,29 y los libros 65.714,29: son iguales. Por "
              "conciliar: -13.402,94 del banco y -13.402,94 de los libros.");
    // One key accepts the line, and another one its neighbour.
    d.elige("TxtMarca", "*");
    rellena(d, {{"TxtFecha", "0102"}});
    d.enfoca("GrdMovimientos");
    motor.setLockTimeout(30);
    auto otro = std::make_unique<OtroPuesto>(rutaSistema(ctx.sesion.rutaEmpresa()),
                                             "BEGIN; SELECT count(*) FROM Diario;");
    guion.esperaEleccion(false);
    d.intro();
    EXPECT_TRUE(guion.agotado());
    EXPECT_EQ(columna(d, 4), QStringList(9, "Propuesto").join(u' '));
    EXPECT_EQ(d.textoDe("TxtFecha"), "01/02/2024");
    guion.esperaEleccion(true, [&] { otro.reset(); });
    d.intro();
    d.intro();
    EXPECT_EQ(valor("Select Punteo from Diario where Subcuenta='57200001' and Importe=-2389.47"),
              "*");
    EXPECT_EQ(puntuadas("*") + columna(d, 0).left(10), "222/01/2024");
    EXPECT_EQ(valor("Select Conciliado from MovimientosBanco where Apunte is not Null"),
              "01/02/2024");
    guion.esperaMensaje("Partidas punteadas: 7", "Norma 43");
    d.mnemonico('T');
    EXPECT_EQ(filas(d), 0);
    EXPECT_TRUE(d.textoDe("LblCuadre").endsWith(" 0,00 del banco y 0,00 de los libros."));
    d.mnemonico('V');
    EXPECT_EQ(columna(d, 4), QStringList(9, "Conciliado").join(u' '));
    d.mnemonico('H');
    EXPECT_EQ(puntuadas("*") + tabla(d).textoDe(0, 4), "8Propuesto");
    leeExtracto(d, "Movimientos nuevos: 0. Ya leídos antes: 12.");
    EXPECT_EQ(filas(d), 9);
    d.escape();
  });
  comprueba();
}

TEST_F(Banco, LoQueNoEstaEnLosLibrosSeAsienta) {
  herramienta("MnuNorma43", [&](Teclado& d) {
    leeExtracto(d, "Movimientos nuevos: 12. Ya leídos antes: 0.");
    d.elige("TxtCuenta", "99920007590200054321");
    d.escribe("TxtSubcuenta", "572.2");
    d.enfoca("GrdMovimientos");
    EXPECT_EQ(columna(d, 4), "Propuesto Sin asentar Sin asentar");
    d.intro();
    ASSERT_EQ(tabla(d).textoDe(0, 2), "COMPRA TARJETA FERIA INTERNACIONAL");
    guion.esperaMensaje("Ningún movimiento sin asentar tiene regla", "Norma 43");
    d.mnemonico('G');
    // The counterpart, a rule for the other movement, and Enter on the button.
    d.enfoca("GrdMovimientos");
    d.intro();
    EXPECT_EQ(d.enfocado(), "TxtContrapartida");
    EXPECT_EQ(d.textoDe("TxtPalabras"), "compra tarjeta feria");
    d.entra("627.1");
    EXPECT_EQ(d.textoDe("LblContrapartida"), "Publicidad");
    d.tecla(Qt::Key_Space);
    rellena(d, {{"TxtPalabras", "Anulación"}});
    d.llega("CmdAsentar");
    {
      // Another station holds the file: it is told, and nothing is written.
      motor.setLockTimeout(30);
      OtroPuesto otro(rutaSistema(ctx.sesion.rutaEmpresa()), "BEGIN IMMEDIATE;");
      guion.esperaMensaje(errorEnCaja(3260, ctx.sesion.rutaEmpresa()), "Librano");
      d.intro();
    }
    comprueba();
    EXPECT_EQ(d.textoDe("TxtContrapartida"), "62700001");
    d.intro();
    anota(121, "30/01/2024", "COMPRA TARJETA FERIA INTERNACIONAL",
          {{"57200002", -92.4}, {"62700001", 92.4}});
    comprueba();
    EXPECT_EQ(columna(d, 4) + columna(d, 8), "Con reglaIrá a 62700001");
    // Nothing is posted before the day that the company has closed.
    ctx.sesion.FechaNoModificar = "01/02/2024";
    guion.esperaMensaje("Usted no puede modificar ningun apunte anterior a la fecha 01/02/2024",
                        "Error");
    d.pulsa("CmdAsentar");
    ctx.sesion.FechaNoModificar.clear();
    comprueba();
    guion.esperaPregunta("Movimientos con regla: 1. ¿Desea asentarlos?", true, "Norma 43");
    d.mnemonico('G');
    anota(122, "31/01/2024", "ANULACION COMISION DE APERTURA",
          {{"57200002", 35}, {"62700001", -35}});
    comprueba();
    EXPECT_EQ(d.textoDe("LblCuadre"),
              "Al 31/01/2024 el banco dice 590,56 y los libros 625,56: diferencia de -35,00. Por "
              "conciliar: 0,00 del banco y 0,00 de los libros.");
    d.escape();
  });
}

class ListaDeRevision : public DiarioDelTrimestre {
 protected:
  // Enter on the row of a check opens its dialog.
  void abre(Teclado& d, const QStringList& f) {
    SCOPED_TRACE(f.join(' ').toStdString());
    auto& tabla = d.control<TablaHoja>("GrdRevision");
    int fila = 0;
    while (tabla.textoDe(fila, 0) != f[0] || tabla.textoDe(fila, 1) != f[1])
      ASSERT_LT(++fila, tabla.model()->rowCount());
    tabla.irA(fila);
    d.enfoca("GrdRevision");
    guion.esperaDialogo(f[2], [&](Teclado& abierto) {
      EXPECT_EQ(f[3].isEmpty() ? abierto.forma().windowTitle() : abierto.textoDe(qPrintable(f[3])),
                f[4]);
      abierto.escape();
    });
    d.intro();
    EXPECT_EQ(tabla.fila(), fila);
  }
};

TEST_F(ListaDeRevision, ElTrimestreEstaLimpio) {
  herramienta("MnuRevision", [&](Teclado& d) {
    EXPECT_EQ(d.textoDe("LblResumen"), "No se ha encontrado nada en 10 controles.");
    EXPECT_FALSE(d.control("CmdAbrir").isEnabled());
    d.escape();
  });
}

TEST_F(ListaDeRevision, CadaFilaAbreAquelloDeLoQueHabla) {
  ponPlantillas(ctx);
  const auto base = abreBase();
  Faltas faltas(*base);
  const QString xlsx = carpetaDatos() + "/revision.xlsx";
  herramienta("MnuRevision", [&](Teclado& d) {
    const TablaHoja& tabla = d.control<TablaHoja>("GrdRevision");
    EXPECT_EQ(d.textoDe("LblResumen"), "Encontrado: 13. Intro abre aquello de lo que se habla.");
    for (const QStringList& f : leeCsv("banco/revision.csv")) abre(d, f);
    d.mnemonico('I');
    const LibroImpreso impreso = leeVista(guion);
    activar(d.forma());
    EXPECT_EQ(impreso.linea("Asientos"),
              "Asientos descuadrados 303 El asiento 303 no cuadra: diferencia de 3,00");
    guion.esperaFichero(xlsx);
    guion.esperaMensaje("Hoja hecha", "Lista de revisión");
    d.mnemonico('E');
    const QString sinCarpeta = carpetaDatos() + "/no/hay.xlsx";
    guion.esperaFichero(sinCarpeta);
    guion.esperaMensaje(errorEnCaja(75, rutaPrograma(sinCarpeta)), "Librano");
    d.mnemonico('E');
    // What is put right has gone when it is looked at again.
    faltas.enPlan("40000001", "Nif", "B46554432");
    motor.flush();
    d.mnemonico('R');
    EXPECT_EQ(tabla.textoDe(0, 0), "IBAN");
    d.escape();
  });
  const auto celdas = Cuaderno(xlsx).celdas(1);
  EXPECT_EQ(celdas["A1"] + celdas["B1"] + celdas["C1"], "'Control''Dónde''Qué se ha encontrado'");
  EXPECT_EQ(celdas["A2"] + celdas["B2"], "'NIF''40000001'");
  EXPECT_EQ(celdas["C14"],
            "'99000001 De orden: no está en ninguna línea del balance ni de resultados'");
  EXPECT_FALSE(celdas.contains("A15"));
}

}  // namespace
