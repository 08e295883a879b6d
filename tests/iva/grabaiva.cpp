// What an invoice writes, row by row: the register, the lines of the asiento and the counters.
#include "iva/grabaiva.h"

#include "common/ignorar.h"
#include "soporte/libros.h"

namespace {

const QString kMascara = "#,##0.00 ;-#,##0.00";
const ClaseDeFactura kAltaS = {LibroIVA::Soportado, false};
const ClaseDeFactura kAltaR = {LibroIVA::Repercutido, false};

class GrabaIVA : public testing::Test, protected Libros {
 protected:
  GrabaIVA() {
    registro.setDatabaseName(rutaEmpresa());
    diario.bind(rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
    empresa.bind(rutaEmpresa(), "Select * from Empresa");
  }

  // An invoice with its boxes filled from the base, as the screen fills them.
  static FacturaIVA factura(const QString& orden, const QString& base, double iva, double re) {
    FacturaIVA f;
    f.NOrden = orden;
    f.CodigoProveedor = "40000001";
    f.NombreProveedor = QString(60, 'x');
    f.NumFactura = "F-7";
    f.Fecha = "03/02/2024";
    f.FechaContable = "05/02/2024";
    f.AsientoContable = "Auto--";
    f.Base = base;
    f.CuentaIva = "47200001";
    f.CuentaRecargo = "47500001";
    f.Contrapartida = "60000001";
    f.PorcenIVA = iva;
    f.PorcenREC = re;
    calculaDesdeBase(f, kMascara);
    return f;
  }
  GrabadoIVA acepta(const FacturaIVA& f, const ClaseDeFactura& clase) {
    GrabadoIVA grabado;
    grabaFactura(f, clase, kMascara, {registro, diario, empresa}, grabado);
    return grabado;
  }
  QString contadores() {
    return filas("Select Asiento, NLinDiario, NLinIVAS, NLinIVAR from Empresa").first();
  }

  DataControl registro{motor};
  DataControl diario{motor};
  DataControl empresa{motor};
};

TEST_F(GrabaIVA, CadaRegistroConSusSignos) {
  const struct {
    ClaseDeFactura clase;
    const char *orden, *base;
    double iva, re;
    void (*cambia)(FacturaIVA&);
    QString fila;    // Codigo, Base, IVA, Recargo, PorcenIVA, PorcenREC, Neto
    QString lineas;  // subcuenta, side and amount of each
    QString contadores;
  } casos[] = {
      {kAltaS, "1", "1.234,50 ", 16, 4, nullptr, "S0000000001|1234,5|197,52|49,38|16|4|1481,4",
       "60000001 D 1234,5, 47200001 D 197,52, 47500001 D 49,38, 40000001 H -1481,4", "2|4|1|0"},
      {kAltaS, "5", "-100,00", 16, 0, nullptr, "S0000000005|-100|-16|0|16|0|-116",
       "60000001 D -100, 47200001 D -16, 40000001 H 116", "3|7|5|0"},
      {kAltaR, "1", "200,00 ", 7, 0, nullptr, "R0000000001|-200|-14|0|7|0|-214",
       "60000001 H -200, 47200001 H -14, 40000001 D 214", "4|10|5|1"},
      // Exempt and rectifying, joined to an asiento that is there.
      {kAltaR, "3", "-50,00", 0, 0, [](FacturaIVA& f) { f.AsientoContable = "2"; },
       "R0000000003|50|0|0|0|0|50", "60000001 H 50, 40000001 D -50", "4|12|5|3"},
      // Zeros in another shape give lines; a lower number moves the counter back.
      {kAltaS, "2", "0,00 ", 0, 0, [](FacturaIVA& f) { f.ImporteIva = f.Recargo = "0"; },
       "S0000000002|0|0|0|0|0|0", "60000001 D 0, 47200001 D 0, 47500001 D 0, 40000001 H 0",
       "5|16|2|3"},
      // The row's amounts follow the sign of the base alone, the lines each its own.
      {kAltaR, "4", "-100,00", 16, 0, [](FacturaIVA& f) { f.ImporteIva = "16,00 "; },
       "R0000000004|100|6|0|16|0|116", "60000001 H 100, 47200001 H -16, 40000001 D -116",
       "6|19|2|4"},
  };
  for (const auto& caso : casos) {
    FacturaIVA f = factura(caso.orden, caso.base, caso.iva, caso.re);
    if (caso.cambia) caso.cambia(f);
    const GrabadoIVA grabado = acepta(f, caso.clase);
    EXPECT_EQ(filas("Select Codigo, Base, IVA, Recargo, PorcenIVA, PorcenREC, Neto from RSIVA "
                    "where Codigo='" +
                    grabado.codigo + "'")
                  .first(),
              caso.fila);
    QStringList lineas;
    for (const QString& linea : filas("Select Subcuenta, DH, Importe, Descripcion, NAsiento from "
                                      "Diario where ApunteIVA='" +
                                      grabado.codigo + "' order by NLinea")) {
      lineas += linea.section('|', 0, 2).replace('|', ' ');
      EXPECT_EQ(linea.section('|', 3), "De su fra.F-7 " + QString(36, 'x') + '|' + grabado.asiento);
    }
    EXPECT_EQ(lineas.join(", "), caso.lineas);
    EXPECT_EQ(contadores(), caso.contadores);
  }
  // Read back, an ordinary invoice is positive in either register.
  registro.bind(rutaEmpresa(), "Select * from RSIVA where Codigo='R0000000001'");
  EXPECT_EQ(importesDe(leeFila(registro.Recordset())).base, 200);
  EXPECT_EQ(importesDe(leeFila(registro.Recordset())).neto, 214);
}

// Where a step fails those before it stay.
TEST_F(GrabaIVA, UnFalloDejaLoAnterior) {
  acepta(factura("2147483647", "1,00 ", 0, 0), kAltaS);  // ten digits take no zeros
  const struct {
    const char* que;
    void (*estropea)(FacturaIVA&);
    int error;
    QString contadores;
  } casos[] = {
      {"order number taken", [](FacturaIVA& f) { f.NOrden = "2147483647"; }, 3022,
       "3|2|2147483647|0"},
      {"eleven digits", [](FacturaIVA& f) { f.NOrden = "00000000007"; }, 5, "3|2|7|0"},
      {"no number", [](FacturaIVA& f) { f.NOrden = ""; }, 3421, "3|2|7|0"},
      {"no amount", [](FacturaIVA& f) { f.ImporteIva = "--1,00"; }, 3421, "3|2|8|0"},
      {"no date", [](FacturaIVA& f) { f.FechaContable = "31/02/2024"; }, 3421, "4|2|8|0"},
  };
  for (const auto& caso : casos) {
    FacturaIVA f = factura("8", "10,00 ", 16, 0);
    caso.estropea(f);
    EXPECT_ERROR(caso.error, acepta(f, kAltaS)) << caso.que;
    EXPECT_EQ(contadores(), caso.contadores) << caso.que;
    EXPECT_EQ(filas("Diario").size(), 2) << caso.que;
    EXPECT_EQ(filas("RSIVA").size(), 1) << caso.que;
  }
}

TEST_F(GrabaIVA, LoDeshechoNoSeDiceEnElDiario) {
  const ErrorEjecucion error(3043);
  const auto texto = [&](const GrabadoIVA& g) { return textoDeFallo(error, *abre(), g); };
  const FacturaIVA f = factura("1", "10,00 ", 16, 0);
  GrabadoIVA grabado = acepta(f, kAltaS);
  EXPECT_TRUE(
      texto(grabado).endsWith(" La factura no está entera en el diario: revise el asiento "
                              "1."));
  motor.discard();
  EXPECT_EQ(texto(grabado), error.descripcion());
  // A change that has got no further than the old lines.
  acepta(f, kAltaS);
  motor.flush();
  for (const bool seDeshace : {true, false}) {
    diario.bind(rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco where NAsiento=1");
    registro.bind(rutaEmpresa(), "Select * from RSIVA");
    FacturaIVA cambiada = f;
    cambiada.AsientoContable = "1";
    if (!seDeshace) cambiada.NOrden = "00000000001";
    grabado = {};
    ignorando([&] {
      grabaFactura(cambiada, {LibroIVA::Soportado, true}, kMascara, {registro, diario, empresa},
                   grabado);
    });
    if (seDeshace) motor.discard();
    EXPECT_EQ(texto(grabado) == error.descripcion(), seDeshace);
  }
}

TEST(FacturaIVA, ElOpuestoDeUnTexto) {
  EXPECT_EQ(opuestoSegunBase("-16,00", "100,00 ", kMascara), "--16,00");
  const QString parentesis = "#,##0.00;(#,##0.00)";
  EXPECT_EQ(opuesto("(16,00)", parentesis), "16,00");
  EXPECT_EQ(opuesto("16,00", parentesis), "-16,00");
  EXPECT_EQ(opuesto("", "#,###"), "");  // a zero that is shown as nothing
}

}  // namespace
