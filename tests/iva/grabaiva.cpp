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
  // Boxes with what is typed over them: "ImporteIva=0&Recargo=0".
  static void pon(FacturaIVA& f, const QString& tecleado) {
    const QHash<QString, QString FacturaIVA::*> casillas = {
        {"NOrden", &FacturaIVA::NOrden},
        {"AsientoContable", &FacturaIVA::AsientoContable},
        {"FechaContable", &FacturaIVA::FechaContable},
        {"ImporteIva", &FacturaIVA::ImporteIva},
        {"Recargo", &FacturaIVA::Recargo}};
    for (const QString& una : tecleado.split('&', Qt::SkipEmptyParts))
      f.*casillas[una.section('=', 0, 0)] = una.section('=', 1);
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
  for (const QStringList& caso : leeCsv("facturas.csv")) {
    FacturaIVA f = factura(caso[1], caso[2], caso[3].toDouble(), caso[4].toDouble());
    pon(f, caso[5]);
    const GrabadoIVA grabado = acepta(f, caso[0] == "S" ? kAltaS : kAltaR);
    EXPECT_EQ(filas("Select Codigo, Base, IVA, Recargo, PorcenIVA, PorcenREC, Neto from RSIVA "
                    "where Codigo='" +
                    grabado.codigo + "'")
                  .first(),
              caso[6]);
    QStringList lineas;
    for (const QString& linea : filas("Select Subcuenta, DH, Importe, Descripcion, NAsiento from "
                                      "Diario where ApunteIVA='" +
                                      grabado.codigo + "' order by NLinea")) {
      lineas += linea.section('|', 0, 2).replace('|', ' ');
      EXPECT_EQ(linea.section('|', 3), "De su fra.F-7 " + QString(36, 'x') + '|' + grabado.asiento);
    }
    EXPECT_EQ(lineas.join(", "), caso[7]);
    EXPECT_EQ(contadores(), caso[8]);
  }
  // Read back, an ordinary invoice is positive in either register.
  registro.bind(rutaEmpresa(), "Select * from RSIVA where Codigo='R0000000001'");
  EXPECT_EQ(importesDe(leeFila(registro.Recordset())).base, 200);
  EXPECT_EQ(importesDe(leeFila(registro.Recordset())).neto, 214);
}

// Where a step fails those before it stay.
TEST_F(GrabaIVA, UnFalloDejaLoAnterior) {
  acepta(factura("2147483647", "1,00 ", 0, 0), kAltaS);  // ten digits take no zeros
  for (const QStringList& caso : leeCsv("facturasmalas.csv")) {
    SCOPED_TRACE(caso[0].toStdString());
    FacturaIVA f = factura("8", "10,00 ", 16, 0);
    pon(f, caso[0]);
    EXPECT_ERROR(caso[1].toInt(), acepta(f, kAltaS));
    EXPECT_EQ(contadores(), caso[2]);
    EXPECT_EQ(filas("Diario").size(), 2);
    EXPECT_EQ(filas("RSIVA").size(), 1);
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
