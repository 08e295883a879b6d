// The quarter's company put on the plan of 2007 by keys, and its official statements afterwards.
#include <QPlainTextEdit>
#include <QTableWidget>

#include "escenarios/herramientas.h"

namespace {

class ALaLeyDeHoy : public DiarioDelTrimestre {
 protected:
  ALaLeyDeHoy() {
    inserta("Subcuentas",
            {{"Subcuenta", "20000001"}, {"Cuenta", "200"}, {"Descripcion", "Gastos"}});
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
  QString sumas() const {
    double debe = 0, haber = 0;
    for (const auto& [numero, l] : libro) (l.alHaber() ? haber : debe) += l.importe;
    const QString mascara = ctx.sesion.MascaraImporte;
    return "debe " + Format(debe, mascara).trimmed() + ", haber " +
           Format(-haber, mascara).trimmed();
  }
  // The first amount of a line of the statement on show.
  static QString importe(const Teclado& d, const QString& concepto) {
    const auto& tabla = d.control<QTableWidget>("GrdEstado");
    for (int i = 0; i < tabla.rowCount(); ++i)
      if (tabla.item(i, 0)->text().trimmed() == concepto) return tabla.item(i, 1)->text().trimmed();
    return {};
  }

  QHash<QString, QString> nuevas_;
};

TEST_F(ALaLeyDeHoy, SeConvierteLaEmpresaYSalenSusEstados) {
  const QString titulo = "Conversión al plan de 2007";
  const QString pregunta =
      "Se cambiarán los códigos de toda la empresa, después de hacer una copia de ella. ¿Desea "
      "seguir?";
  herramienta("MnuConversion2007", [&](Teclado& d) {
    const auto& tabla = d.control<QTableWidget>("GrdConversion");
    guion.esperaMensaje("No se ha cambiado nada:\n20000001: falta decidir su código nuevo", titulo);
    acepta(d);
    comprueba();
    d.mnemonico('D');
    ASSERT_EQ(tabla.rowCount(), 1);
    EXPECT_EQ(tabla.item(0, 5)->text(), "Decidir");
    d.llega("GrdConversion");
    d.teclea("203");  // a bare cuenta takes the ending along
    d.intro();
    EXPECT_EQ(tabla.item(0, 4)->text(), "20300001");
    guion.esperaPregunta(pregunta, false, titulo);
    acepta(d);
    comprueba();
    const QString antes = sumas();
    int cambian = 1;  // 200, which was decided
    for (const QStringList& fila : filas("Select Cuenta from Subcuentas"))
      if (nuevas_.contains(fila[0])) ++cambian;
    const int lineas = convierteLibro();
    guion.esperaPregunta(pregunta, true, titulo);
    guion.esperaMensaje(
        QStringLiteral("Han cambiado %1 subcuentas y %2 líneas del diario.\nSumas antes: %3\nSumas "
                       "después: %3\nLa copia de antes es %4")
            .arg(cambian)
            .arg(lineas)
            .arg(antes, ctx.sesion.rutaEmpresa().replace("Conta.MDB", "Conta antes de 2007.MDB")),
        titulo);
    acepta(d);
  });
  EXPECT_EQ(formularios->abierto("FrmConversion2007"), nullptr);
  comprueba();
  herramienta("MnuBalancePymes", [&](Teclado& d) {
    EXPECT_EQ(importe(d, "TOTAL ACTIVO (A + B)"), "114.320,41");
    EXPECT_EQ(importe(d, "TOTAL PATRIMONIO NETO Y PASIVO (A + B + C)"), "114.320,41");
    EXPECT_EQ(importe(d, "VII. Resultado del ejercicio"), "12.100,98");
    EXPECT_TRUE(
        d.control<QPlainTextEdit>("LblAvisos").toPlainText().startsWith("El balance cuadra"));
    d.escape();
  });
  herramienta("MnuResultadosPymes", [&](Teclado& d) {
    EXPECT_EQ(importe(d, "D) RESULTADO DEL EJERCICIO"), "12.100,98");
    d.escape();
  });
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
