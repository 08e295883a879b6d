// The quarter's company put on the plan of 2007 by keys.

#include "escenarios/herramientas.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/libroimpreso.h"

namespace {

class ALaLeyDeHoy : public DiarioDelTrimestre {
 protected:
  ALaLeyDeHoy() {
    for (const char* codigo : {"20000001", "20000002"})
      inserta("Subcuentas", subcuentaDe(codigo, "Gastos"));
    cambia("Select * from Empresa", "IVASCom", "22600001");
    inserta("Recibos", {{"Subcuenta", "43200001"}, {"Banco", "57200001"}});
    inserta("RSIVA", {{"Codigo", "S1"}, {"CliPro", "40200001"}, {"CtaCon", "22300001"}});
    ponPlantillas(ctx);
    for (const QStringList& fila : leeCsv("trimestre/de1990a2007.csv")) nuevas_[fila[0]] = fila[1];
  }
  // The journal as it must stand afterwards, and what of it changes.
  int convierteLibro() {
    int cambian = 0;
    for (auto& [numero, l] : libro) {
      const QString destino = nuevas_.value(l.subcuenta.left(3));
      if (destino.isEmpty()) continue;
      l.subcuenta = destino + l.subcuenta.mid(destino.size());
      ++cambian;
    }
    return cambian;
  }
  // The last row of the trial balance of both sides: its sums, in the screen's columns.
  QString sumas() const {
    double debe = 0, haber = 0;
    for (const auto& [numero, l] : libro) (l.alHaber() ? haber : debe) += l.importe;
    const auto importe = [this](double valor) {
      return Format(valor, ctx.sesion.MascaraImporte).trimmed();
    };
    return importe(debe) + ' ' + importe(-haber) + ' ' + importe(0);
  }
  // The trial balance of both sides, on screen and on paper.
  void compruebaBalance(Teclado& d) {
    const auto& balance = d.control<TablaHoja>("GrdSumas");
    const auto celdas = [&](int fila, int desde, int hasta) {
      QStringList textos;
      for (int c = desde; c <= hasta; ++c) textos += balance.textoDe(fila, c);
      return textos.join(' ');
    };
    const int total = balance.model()->rowCount() - 1;
    EXPECT_EQ(celdas(total, 3, 8), sumas() + ' ' + sumas());
    int maquinaria = 0;
    while (maquinaria < total && balance.textoDe(maquinaria, 0) != "22600001") ++maquinaria;
    EXPECT_EQ(celdas(maquinaria, 0, 1), "22600001 21600001");
    EXPECT_EQ(celdas(maquinaria, 3, 5), celdas(maquinaria, 6, 8));
    d.pulsa("CmdImprimir");
    EXPECT_EQ(leeVista(guion).linea("Total"), "Total " + sumas() + ' ' + sumas().chopped(5));
  }
  void compruebaLasDemasTablas() const {
    EXPECT_EQ(fila("Select Subcuenta, Banco from Recibos"), "43300001|57200001");
    EXPECT_EQ(fila("Select CliPro, CtaCon from RSIVA"), "40300001|21300001");
    EXPECT_EQ(fila("Select Count(*) from Subcuentas where Left(Subcuenta,3)<>Cuenta"), "0");
    EXPECT_EQ(filas("Cuentas").size(), 347u);
  }
  // Somebody has a pager over the file, and the user gives the conversion up.
  void seDescarta(Teclado& d) {
    motor.setLockTimeout(30);
    OtroPuesto otro(rutaSistema(ctx.sesion.rutaEmpresa()), "BEGIN; SELECT count(*) FROM Diario;");
    guion.esperaEleccion(false);
    acepta(d);
    EXPECT_TRUE(guion.agotado());
    comprueba();
  }

  QHash<QString, QString> nuevas_;
};

TEST_F(ALaLeyDeHoy, SeConvierteLaEmpresaYSalenSusEstados) {
  const QString titulo = "Conversión al plan de 2007";
  const QString pregunta =
      "Se cambiarán los códigos de toda la empresa, después de hacer una copia de ella. ¿Desea "
      "seguir?";
  herramienta("MnuConversion2007", [&](Teclado& d) {
    EXPECT_TRUE(d.control<QRadioButton>("OptModelo_1").hasFocus());  // the one that is set
    const auto& tabla = d.control<QTableWidget>("GrdConversion");
    guion.esperaMensaje(
        "No se ha cambiado nada:\n20000001: falta decidir su código nuevo\n20000002: falta decidir "
        "su código nuevo",
        titulo);
    acepta(d);
    comprueba();
    d.mnemonico('D');
    ASSERT_EQ(tabla.rowCount(), 2);
    EXPECT_EQ(tabla.item(0, 5)->text(), "Decidir");
    d.llega("GrdConversion");
    d.teclea("203");  // a bare cuenta takes the ending along
    d.intro();
    EXPECT_EQ(tabla.item(0, 4)->text(), "20300001");
    // What was decided stays when the other model is looked at.
    for (const char* modelo : {"OptModelo_0", "OptModelo_1"}) d.pulsa(modelo);
    // Another that nobody uses goes, by one key for all of them.
    EXPECT_EQ(d.textoDe("LblResumen").section("   ", 2), "Se borran: 0   Por decidir: 1");
    d.mnemonico('O');
    EXPECT_EQ(d.textoDe("LblResumen").section("   ", 2), "Se borran: 1   Por decidir: 0");
    guion.esperaPregunta(pregunta, false, titulo);
    acepta(d);
    comprueba();
    guion.esperaPregunta(pregunta, true, titulo);
    seDescarta(d);
    int cambian = 1;  // 200, which was decided
    for (const QStringList& fila : filas("Select Cuenta from Subcuentas"))
      if (nuevas_.contains(fila[0])) ++cambian;
    const int lineas = convierteLibro();
    guion.esperaPregunta(pregunta, true, titulo);
    guion.esperaMensaje(
        QStringLiteral("Subcuentas que han cambiado: %1. Líneas del diario: %2. Subcuentas "
                       "borradas: 1\nLa copia de antes es %3")
            .arg(cambian)
            .arg(lineas)
            .arg(ctx.sesion.rutaEmpresa().replace("Conta.MDB", "Conta antes de 2007.MDB")),
        titulo);
    acepta(d);
    compruebaBalance(d);
    d.escape();
  });
  // The program's own accounts are those of today, without opening the company anew.
  EXPECT_EQ(ctx.sesion.SubcuentaCompras, "21600001");
  herramienta("MnuGrabarIVASoportado", [](Teclado& d) {
    EXPECT_EQ(d.textoDe("TxtContrapartida"), "21600001");
    d.escape();
  });
  EXPECT_EQ(formularios->abierto("FrmConversion2007"), nullptr);
  comprueba();
  compruebaLasDemasTablas();
  // Once more would send codes on: it is asked first.
  herramienta("MnuConversion2007", [&](Teclado& d) {
    guion.esperaPregunta(
        "La empresa sigue ya el plan de 2007 desde el 02/04/2024. Otra conversión "
        "cambiaría otra vez los códigos. ¿Desea seguir?",
        false, titulo);
    acepta(d);
    d.escape();
  });
  comprueba();
}

}  // namespace
