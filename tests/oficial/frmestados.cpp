// The official statements by their screen and on paper.

#include "accounts/plan2007.h"
#include "oficial/widgets/tablahoja.h"
#include "soporte/escenario.h"
#include "soporte/libroimpreso.h"

namespace {

class FrmEstados : public testing::Test, protected Escenario {
 protected:
  FrmEstados() {
    registraFormularios(*formularios);
    apunta("57200001", 1000, 1);
    apunta("10000001", -900, 1);
    apunta("70000001", -300, 2);
    apunta("60000001", 200, 2);
  }
  void apunta(const QString& subcuenta, double importe, int mes, const QString& empresa = {}) {
    const auto diario = abreBase(empresa)->OpenRecordset("Diario");
    anade(*diario, lineaDe(1 + diario->rowTotal(), mes, QDate(2003, mes, 5), subcuenta, importe));
  }
  // The row of a line on show; -1 where it isn't.
  static int lugar(const Teclado& t, const QString& concepto) {
    const auto& tabla = t.control<TablaHoja>("GrdEstado");
    int i = tabla.model()->rowCount();
    while (--i >= 0 && tabla.textoDe(i, 0).trimmed() != concepto) {
    }
    return i;
  }
  static QString fila(const Teclado& t, const QString& concepto) {
    const auto& tabla = t.control<TablaHoja>("GrdEstado");
    const int columnas = tabla.model()->columnCount();
    const int i = lugar(t, concepto);
    if (i >= 0) return tabla.textoDe(i, 1) + '|' + (columnas > 2 ? tabla.textoDe(i, 2) : QString());
    return {};
  }
  static QString avisos(const Teclado& t) {
    return t.control<QPlainTextEdit>("LblAvisos").toPlainText();
  }
};

TEST_F(FrmEstados, ElAnoAnteriorVieneDeOtraEmpresa) {
  DatosEmpresa datos = empresaDePrueba();
  datos.NombreEmpresa = "Vieja";
  datos.Ano = "2002";
  creaEmpresa(datos);
  apunta("57200001", 70, 1, "Vieja");
  apunta("11100001", -70, 1, "Vieja");
  apunta("55300001", 5, 3);
  Teclado t = abreCon("FrmEstados", 1);
  t.elige("TxtEmpresa", "Vieja");
  EXPECT_EQ(fila(t, "TOTAL ACTIVO (A + B)"), "1.000,00|70,00");
  EXPECT_EQ(avisos(t).split('\n'),
            (QStringList{"La empresa Vieja no consta que siga el plan de 2007",
                         "El activo no es igual al patrimonio neto y pasivo: diferencia de 70,00 "
                         "(año anterior)",
                         "55300001 : no está en ninguna línea, saldo de 5,00",
                         "11100001 : no está en ninguna línea, saldo de -70,00 (año anterior)"}));
  anotaPlan2007(*abreBase("Vieja"), Modelo2007::Pymes, {2002, 1, 1});
  t.marca("ChkTodas");
  EXPECT_FALSE(avisos(t).contains("no consta"));
  ponPlantillas(ctx);
  t.pulsa("CmdAceptar");
  const LibroImpreso balance = leeVista(guion);
  EXPECT_EQ(balance.titulo, "Balance (PYMES)");
  EXPECT_TRUE(balance.linea("Concepto").endsWith("2003 2002")) << qPrintable(balance.linea("Conc"));
  EXPECT_EQ(balance.linea("TOTAL ACTIVO"), "TOTAL ACTIVO (A + B) 10000 1.000,00 70,00");
  EXPECT_EQ(balance.linea("VII. Resultado"), "VII. Resultado del ejercicio 21700 100,00 0,00");
  EXPECT_EQ(balance.linea("55300001"), "55300001 : no está en ninguna línea, saldo de 5,00");
  t.marca("ChkTodas", false);
  t.pulsa("CmdAceptar");
  EXPECT_EQ(leeVista(guion).linea("I. Inmovilizado intangible"), "");
  t.pulsa("CmdSinAnterior");
  EXPECT_EQ(fila(t, "TOTAL ACTIVO (A + B)"), "1.000,00|");
  EXPECT_EQ(avisos(t), "55300001 : no está en ninguna línea, saldo de 5,00");
}

// What no code tells is typed: a part of a line, what goes from one line to another.
TEST_F(FrmEstados, LosDesglosesSeEscribenYSonDeSuPeriodo) {
  apunta("43000001", 500, 3);
  apunta("74600001", -500, 3);
  const auto escribe = [](Teclado& t, const QString& concepto, const QString& importe) {
    ASSERT_GE(lugar(t, concepto), 0);
    t.control<TablaHoja>("GrdEstado").irA(lugar(t, concepto), 1);
    t.enfoca("GrdEstado");
    t.entra(importe);
    QCoreApplication::processEvents();
  };
  const QString clientes = "1. Clientes por ventas y prestaciones de servicios";
  const QString noCorrientes = "VII. Deudores comerciales no corrientes";
  Teclado t = abreCon("FrmEstados", 1);
  EXPECT_EQ(lugar(t, noCorrientes), -1);
  t.marca("ChkTodas");
  escribe(t, noCorrientes, "120,5");
  EXPECT_EQ(fila(t, clientes), "379,50|");
  EXPECT_EQ(fila(t, "A) ACTIVO NO CORRIENTE"), "120,50|");
  EXPECT_EQ(fila(t, "TOTAL ACTIVO (A + B)"), "1.500,00|");
  const QString largo = "a) Clientes por ventas y prestaciones de servicios a largo plazo";
  escribe(t, largo, "79,5");
  EXPECT_EQ(fila(t, "b) Clientes por ventas y prestaciones de servicios a corto plazo"), "300,00|");
  EXPECT_EQ(fila(t, clientes), "379,50|");
  guion.esperaMensaje(errorEnCaja(13, "«x» no es un importe"), "Librano");
  escribe(t, largo, "x");
  t.tecla(Qt::Key_Delete);
  QCoreApplication::processEvents();
  EXPECT_EQ(fila(t, largo), "0,00|");
  t.marca("ChkTodas", false);
  EXPECT_EQ(fila(t, noCorrientes), "120,50|");  // it has an amount
  t.elige("TxtHasta", "11-Noviembre");
  EXPECT_EQ(fila(t, noCorrientes), "");
  EXPECT_EQ(fila(t, clientes), "500,00|");
  t.elige("TxtHasta", "02-Febrero");
  EXPECT_EQ(fila(t, clientes), "");

  t = abreCon("FrmEstados", 2);
  t.marca("ChkTodas");
  escribe(t, "a) Imputación de subvenciones, donaciones y legados de carácter financiero", "200");
  EXPECT_EQ(fila(t, "12. Ingresos financieros"), "200,00|");
  EXPECT_EQ(fila(t, "b) Otros ingresos financieros"), "");
  EXPECT_EQ(fila(t, "9. Imputación de subvenciones de inmovilizado no financiero y otras"),
            "300,00|");
  EXPECT_EQ(fila(t, "D) RESULTADO DEL EJERCICIO"), "600,00|");
  ponPlantillas(ctx);
  t.pulsa("CmdAceptar");
  const LibroImpreso impreso = leeVista(guion);
  EXPECT_EQ(impreso.linea("12. Ingresos"), "12. Ingresos financieros 41400 200,00");
}

}  // namespace
