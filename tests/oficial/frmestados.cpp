// The official statements by their screen and on paper.
#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTableWidget>

#include "accounts/plan2007.h"
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
    const auto base = motor.Workspaces(0).OpenDatabase(
        empresa.isEmpty() ? ctx.sesion.rutaEmpresa() : ctx.sesion.rutaEmpresa(empresa));
    const auto diario = base->OpenRecordset("Diario");
    diario->AddNew();
    diario->Fields("NLinea") = 1 + diario->rowTotal();
    diario->Fields("NAsiento") = mes;
    diario->Fields("Fecha") = QDate(2003, mes, 5);
    diario->Fields("Subcuenta") = subcuenta;
    diario->Fields("DH") = importe > 0 ? "D" : "H";
    diario->Fields("Importe") = importe;
    diario->Update();
  }
  Teclado abreEstado(int codigo) {
    ctx.sesion.CodigoLlamada = codigo;
    return Teclado(abre("FrmEstados"));
  }
  static QString fila(const Teclado& t, const QString& concepto) {
    const auto& tabla = t.control<QTableWidget>("GrdEstado");
    for (int i = 0; i < tabla.rowCount(); ++i)
      if (tabla.item(i, 0)->text().trimmed() == concepto)
        return tabla.item(i, 1)->text().trimmed() + '|' +
               (tabla.isColumnHidden(2) ? QString() : tabla.item(i, 2)->text().trimmed());
    return {};
  }
  static QString avisos(const Teclado& t) {
    return t.control<QPlainTextEdit>("LblAvisos").toPlainText();
  }
};

TEST_F(FrmEstados, SigueALoQueSeElige) {
  Teclado t = abreEstado(1);
  EXPECT_EQ(t.forma().windowTitle(), "Balance (PYMES)");
  EXPECT_EQ(fila(t, "TOTAL ACTIVO (A + B)"), "1.000,00|");
  EXPECT_EQ(fila(t, "VII. Resultado del ejercicio"), "100,00|");
  EXPECT_EQ(avisos(t),
            "El balance cuadra, el resultado es el mismo en los dos estados y todas las cuentas "
            "tienen su línea.");
  EXPECT_EQ(fila(t, "I. Inmovilizado intangible"), "");
  t.marca("ChkTodas");
  EXPECT_EQ(fila(t, "I. Inmovilizado intangible"), "0,00|");
  // January alone doesn't square: what is missing is in February.
  t.elige("TxtHasta", "01-Enero");
  EXPECT_EQ(fila(t, "TOTAL PATRIMONIO NETO Y PASIVO (A + B + C)"), "900,00|");
  EXPECT_EQ(avisos(t), "El activo no es igual al patrimonio neto y pasivo: diferencia de 100,00");

  t = abreEstado(2);
  EXPECT_EQ(fila(t, "1. Importe neto de la cifra de negocios"), "300,00|");
  EXPECT_EQ(fila(t, "D) RESULTADO DEL EJERCICIO"), "100,00|");
}

TEST_F(FrmEstados, ElAnoAnteriorVieneDeOtraEmpresa) {
  DatosEmpresa datos = empresaDePrueba();
  datos.NombreEmpresa = "Vieja";
  datos.Ano = "2002";
  creaEmpresa(datos);
  apunta("57200001", 70, 1, "Vieja");
  apunta("11100001", -70, 1, "Vieja");
  apunta("55300001", 5, 3);
  Teclado t = abreEstado(1);
  t.elige("TxtEmpresa", "Vieja");
  EXPECT_EQ(fila(t, "TOTAL ACTIVO (A + B)"), "1.000,00|70,00");
  EXPECT_EQ(avisos(t).split('\n'),
            (QStringList{"La empresa Vieja no consta que siga el plan de 2007",
                         "El activo no es igual al patrimonio neto y pasivo: diferencia de 70,00 "
                         "(año anterior)",
                         "55300001 : no está en ninguna línea, saldo de 5,00",
                         "11100001 : no está en ninguna línea, saldo de -70,00 (año anterior)"}));
  const auto vieja = motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa("Vieja"));
  anotaPlan2007(*vieja, Modelo2007::Pymes, {2002, 1, 1});
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
  // What is on show keeps its lines, whatever is printed after it; those of other days go.
  t.marca("ChkTodas", false);
  t.pulsa("CmdAceptar");
  EXPECT_EQ(leeVista(guion).linea("I. Inmovilizado intangible"), "");
  EXPECT_EQ(valor("Select Max(Lanzamiento) from EstadosOficiales"), "2");
  reloj.ponEn({2003, 3, 16});
  t.pulsa("CmdAceptar");
  leeVista(guion);
  EXPECT_EQ(valor("Select Min(Lanzamiento) from EstadosOficiales"), "3");
  t.pulsa("CmdSinAnterior");
  EXPECT_EQ(fila(t, "TOTAL ACTIVO (A + B)"), "1.000,00|");
  EXPECT_EQ(avisos(t), "55300001 : no está en ninguna línea, saldo de 5,00");
}

}  // namespace
