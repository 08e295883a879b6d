// What an invoice writes, row by row: the register, the lines of the asiento and the counters.
#include "iva/grabaiva.h"

#include <gtest/gtest.h>

#include "engine/datacontrol.h"
#include "soporte/errores.h"
#include "soporte/libros.h"
#include "soporte/textos.h"

namespace {

const QString kMascara = "#,##0.00 ;-#,##0.00";
const QString kFilas =
    "Select Codigo, CliPro, Factura, Base, TipoIVA, Asiento, CtaIVA, FechaC, Fecha, CtaRE, CtaCon, "
    "IVA, Recargo, PorcenIVA, PorcenREC, Neto from RSIVA order by Codigo";
const QString kLineas =
    "Select NLinea, NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe, ApunteIVA from Diario "
    "order by NLinea";
const QString kContadores = "Select Asiento, NLinDiario, NLinIVAS, NLinIVAR from Empresa";
const QString kAltaS = "Asiento de IVA Soportado (Alta)";
const QString kAltaR = "Asiento de IVA Repercutido (Alta)";

class GrabaIVA : public testing::Test, protected Libros {
 protected:
  GrabaIVA() {
    registro.setDatabaseName(rutaEmpresa());
    diario.bind(rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
    empresa.bind(rutaEmpresa(), "Select * from Empresa");
  }

  // An invoice of 3 February with its boxes filled from the base, as the screen fills them.
  static FacturaIVA factura(const QString& orden, const QString& base, double iva, double re) {
    FacturaIVA f;
    f.NOrden = orden;
    f.CodigoProveedor = "40000001";
    f.NombreProveedor = "Suministros Ebro, S.L.";
    f.NumFactura = "F-7";
    f.Fecha = "03/02/2024";
    f.FechaContable = "05/02/2024";
    f.AsientoContable = "Auto--";
    f.Base = base;
    f.Iva = "03";
    f.CuentaIva = "47200001";
    f.CuentaRecargo = "47500001";
    f.Contrapartida = "60000001";
    f.PorcenIVA = iva;
    f.PorcenREC = re;
    calculaDesdeBase(f, kMascara);
    return f;
  }
  GrabadoIVA acepta(const FacturaIVA& f, const QString& titulo) {
    GrabadoIVA grabado;
    grabaFactura(f, claseDe(titulo), kMascara, {registro, diario, empresa}, grabado);
    return grabado;
  }
  // What a fuente holds against what it must hold, as texts.
  void compara(const QString& fuente, const QStringList& esperado) {
    EXPECT_EQ(filas(fuente).join('\n'), esperado.join('\n'));
  }

  DataControl registro{motor};
  DataControl diario{motor};
  DataControl empresa{motor};
};

TEST_F(GrabaIVA, CadaRegistroConSusSignos) {
  acepta(factura("1", "1.234,50 ", 16, 4), kAltaS);
  acepta(factura("5", "-100,00", 16, 0), kAltaS);  // a rectifying one, and a number skipped
  acepta(factura("1", "200,00 ", 7, 0), kAltaR);
  FacturaIVA exenta = factura("2", "-50,00", 0, 0);
  exenta.AsientoContable = "3";  // a second rate of the invoice before
  acepta(exenta, kAltaR);

  const QString cuentas = "47200001|05/02/2024|03/02/2024|47500001|60000001|";
  compara(kFilas, {"R0000000001|40000001|F-7|-200|03|3|" + cuentas + "-14|0|7|0|-214",
                   "R0000000002|40000001|F-7|50|03|3|" + cuentas + "0|0|0|0|50",
                   "S0000000001|40000001|F-7|1234,5|03|1|" + cuentas + "197,52|49,38|16|4|1481,4",
                   "S0000000005|40000001|F-7|-100|03|2|" + cuentas + "-16|0|16|0|-116"});
  const QString texto = "|De su fra.F-7 Suministros Ebro, S.L.|";
  compara(kLineas, {"0|1|05/02/2024|60000001" + texto + "D|1234,5|S0000000001",
                    "1|1|05/02/2024|47200001" + texto + "D|197,52|S0000000001",
                    "2|1|05/02/2024|47500001" + texto + "D|49,38|S0000000001",
                    "3|1|05/02/2024|40000001" + texto + "H|-1481,4|S0000000001",
                    "4|2|05/02/2024|60000001" + texto + "D|-100|S0000000005",
                    "5|2|05/02/2024|47200001" + texto + "D|-16|S0000000005",
                    "6|2|05/02/2024|40000001" + texto + "H|116|S0000000005",
                    "7|3|05/02/2024|60000001" + texto + "H|-200|R0000000001",
                    "8|3|05/02/2024|47200001" + texto + "H|-14|R0000000001",
                    "9|3|05/02/2024|40000001" + texto + "D|214|R0000000001",
                    "10|3|05/02/2024|60000001" + texto + "H|50|R0000000002",
                    "11|3|05/02/2024|40000001" + texto + "D|-50|R0000000002"});
  compara(kContadores, {"4|12|5|2"});

  // Read back, an ordinary invoice is positive in either register.
  registro.bind(rutaEmpresa(), "Select * from RSIVA where Codigo='R0000000001'");
  const ImportesIVA importes = importesDe(leeFila(registro.Recordset()));
  EXPECT_EQ(importes.base, 200);
  EXPECT_EQ(importes.neto, 214);
}

TEST_F(GrabaIVA, UnaModificacionRehaceElAsientoEntero) {
  acepta(factura("1", "100,00 ", 16, 0), kAltaS);
  FacturaIVA segunda = factura("2", "10,00 ", 4, 0);
  segunda.AsientoContable = "1";
  acepta(segunda, kAltaS);

  registro.bind(rutaEmpresa(), "select * from RSIVA where asiento=1");
  diario.bind(rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco where Nasiento =1");
  FacturaIVA cambiada = factura("1", "300,00 ", 7, 1);
  cambiada.AsientoContable = "1";
  cambiada.NombreProveedor = QString(60, 'x');
  cambiada.FacturaZuri = "Z-9";
  cambiada.EmpresaZuri = "Zuri";
  acepta(cambiada, "Asiento de IVA Soportado (Modificación)");

  // The other rate keeps its row and loses its lines.
  compara("Select Codigo, Base, IVA, Recargo, Neto, Asiento from RSIVA order by Codigo",
          {"S0000000001|300|21|3|324|1", "S0000000002|10|0,4|0|10,4|1"});
  compara("Select NLinea, Importe, ApunteIVA, FacturaZuri, EmpresaZuri from Diario order by NLinea",
          {"6|300|S0000000001|Z-9|Zuri", "7|21|S0000000001|Z-9|Zuri", "8|3|S0000000001|Z-9|Zuri",
           "9|-324|S0000000001|Z-9|Zuri"});
  EXPECT_EQ(filas("Select Descripcion from Diario").first(), "De su fra.F-7 " + QString(36, 'x'));
  compara(kContadores, {"2|10|2|0"});
}

// Where a step fails those before it stay, and what is told of it agrees.
TEST_F(GrabaIVA, UnFalloDejaLoAnterior) {
  acepta(factura("2147483647", "1,00 ", 0, 0), kAltaS);  // ten digits take no zeros
  struct Caso {
    const char* que;
    void (*estropea)(FacturaIVA&);
    int error;
    QString contadores;
  };
  const Caso casos[] = {
      {"order number taken", [](FacturaIVA& f) { f.NOrden = "2147483647"; }, 3022,
       "3|2|2147483647|0"},
      {"eleven digits", [](FacturaIVA& f) { f.NOrden = "00000000007"; }, 5, "3|2|7|0"},
      {"no number", [](FacturaIVA& f) { f.NOrden = ""; }, 3421, "3|2|7|0"},
      {"two signs", [](FacturaIVA& f) { f.ImporteIva = "-1,00"; }, 3421, "3|2|7|8"},
      {"no date", [](FacturaIVA& f) { f.FechaContable = "31/02/2024"; }, 3421, "4|2|8|8"},
  };
  for (const Caso& caso : casos) {
    FacturaIVA f = factura("8", "10,00 ", 16, 0);
    caso.estropea(f);
    GrabadoIVA grabado;
    const QString titulo = f.ImporteIva == "-1,00" ? kAltaR : kAltaS;
    EXPECT_EQ(numeroDeError([&] {
                grabaFactura(f, claseDe(titulo), kMascara, {registro, diario, empresa}, grabado);
              }),
              caso.error)
        << caso.que;
    EXPECT_FALSE(grabado.fila) << caso.que;
    compara(kContadores, {caso.contadores});
    EXPECT_EQ(filas("Select NLinea from Diario").size(), 2) << caso.que;
    EXPECT_EQ(filas("Select Codigo from RSIVA").size(), 1) << caso.que;
  }
}

TEST(FacturaIVA, TextosYCuentas) {
  for (const auto libro : {LibroIVA::Soportado, LibroIVA::Repercutido})
    for (const bool modificacion : {false, true}) {
      const QString titulo = tituloDe({libro, modificacion});
      EXPECT_EQ(claseDe(titulo).libro, libro) << qPrintable(titulo);
      EXPECT_EQ(claseDe(titulo).modificacion, modificacion) << qPrintable(titulo);
    }
  EXPECT_EQ(tituloDe({LibroIVA::Repercutido, true}), "Asiento de IVA Repercutido (Modificación)");
  EXPECT_FALSE(claseDe("Asiento de IVA Soportado (modificación)").modificacion);

  EXPECT_EQ(opuesto("-3,00"), "3,00");
  EXPECT_EQ(opuesto("3,00 "), "-3,00 ");
  EXPECT_EQ(opuesto(""), "");
  EXPECT_EQ(opuestoSegunBase("16,00", "-100,00"), "6,00");
  EXPECT_EQ(opuestoSegunBase("-16,00", "100,00"), "--16,00");
  EXPECT_TRUE(esCero("0,00 ", kMascara));
  EXPECT_FALSE(esCero("0", kMascara));

  // A total typed by hand comes back from its rounded base, and may be a cent off.
  const struct {
    const char* total;
    double iva, re;
    const char *base, *cuota, *recargo, *queda;
  } casos[] = {{"116", 16, 0, "100,00 ", "16,00 ", "0,00 ", "116,00 "},
               {"100,03", 21, 0, "82,67 ", "17,36 ", "0,00 ", "100,03 "},
               {"0,05", 16, 4, "0,04 ", "0,01 ", "0,00 ", "0,05 "},
               {"99,99", 16, 4, "83,33 ", "13,33 ", "3,33 ", "99,99 "},
               {"10,02", 16, 4, "8,35 ", "1,34 ", "0,33 ", "10,02 "},
               {"-58", 16, 0, "-50,00", "-8,00", "0,00 ", "-58,00"}};
  for (const auto& caso : casos) {
    FacturaIVA f;
    f.Total = caso.total;
    f.PorcenIVA = caso.iva;
    f.PorcenREC = caso.re;
    calculaDesdeTotal(f, kMascara);
    EXPECT_EQ((QStringList{f.Base, f.ImporteIva, f.Recargo, f.Total}),
              (QStringList{caso.base, caso.cuota, caso.recargo, caso.queda}))
        << caso.total;
  }
}

TEST_F(GrabaIVA, UnaAdquisicionIntracomunitariaSeCompensa) {
  FacturaIntracomunitaria f{.NumFactura = "Intercomunitario",
                            .Fecha = "10/02/2024",
                            .Iva = "07",
                            .ImporteIva = "160,00 ",
                            .Recargo = "40,00 ",
                            .IVASoportado = "47200001",
                            .IVARepercutido = "47700001",
                            .RESoportado = "47200002",
                            .RERepercutido = "47700002",
                            .PorcenIVA = 16,
                            .PorcenREC = 4};
  GrabadoIVA grabado;
  grabaIntracomunitaria(f, kMascara, {registro, diario, empresa}, grabado);
  f.ImporteIva = "-16,00";
  f.Recargo = "0,00 ";
  grabaIntracomunitaria(f, kMascara, {registro, diario, empresa}, grabado);

  const auto fila = [](const char* codigo, const char* asiento, const char* cuenta,
                       const char* importes, const char* otras) {
    return QString("%1|%2|Intercomunitario|0|07|%3|%2|10/02/2024|10/02/2024|%4|%5|16|4|0")
        .arg(codigo, cuenta, asiento, otras, importes);
  };
  compara(kFilas, {fila("R0000000002", "1", "47700001", "-160|-40", "47700002|47200001"),
                   fila("R0000000004", "2", "47700001", "16|0", "47700002|47200001"),
                   fila("S0000000001", "1", "47200001", "160|40", "47200002|47700001"),
                   fila("S0000000003", "2", "47200001", "-16|0", "47200002|47700001")});
  compara(
      "Select NLinea, NAsiento, Subcuenta, DH, Importe, ApunteIVA, TipoFactura, FacturaZuri "
      "from Diario order by NLinea",
      {"0|1|47200001|D|160|S0000000001|I|-", "1|1|47200002|D|40|S0000000001|I|-",
       "2|1|47700001|H|-160|R0000000002|I|-", "3|1|47700002|H|-40|R0000000002|I|-",
       "4|2|47200001|D|-16|S0000000003|I|-", "5|2|47700001|H|16|R0000000004|I|-"});
  EXPECT_EQ(filas("Select Descripcion from Diario").first(), "Intra.De su fra.Intercomunitario");
  compara(kContadores, {"3|6|0|4"});
}

}  // namespace
