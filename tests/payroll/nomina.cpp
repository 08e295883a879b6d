// What a payroll comes to and writes, line by line.
#include "payroll/nomina.h"

#include "soporte/libros.h"

namespace {

using enum ConceptoNomina;

const QString kMascara = "#,##0.00 ;-#,##0.00";

class GrabaNomina : public testing::Test, protected Libros {
 protected:
  GrabaNomina() {
    diario.bind(rutaEmpresa(), "Select * from SqlDiarioPrincipalBlanco order by nasiento");
    empresa.bind(rutaEmpresa(), "Select * from Empresa");
  }
  // Amounts in the order of the lines, the net last; those of zero are switched off.
  static Nomina nomina(const std::array<double, kConceptosNomina>& importes) {
    Nomina n;
    n.Fecha = "31/01/2024";
    n.ApunteN = "<auto>";
    n.NombreEmpleado = "Pérez";
    for (std::size_t i = 0; i < importes.size(); ++i)
      n.Partes[i] = {QString("6400000%1").arg(i), importes[i], importes[i] != 0};
    return n;
  }
  AsientoGrabado acepta(const Nomina& n) {
    AsientoGrabado grabado;
    grabaNomina(n, kMascara, diario, empresa, grabado);
    return grabado;
  }
  QString contadores() { return filas("Select Asiento, NLinDiario from Empresa").first(); }

  DataControl diario{motor};
  DataControl empresa{motor};
};

TEST_F(GrabaNomina, SusLineasEnOrdenYSinLosCeros) {
  const struct {
    Nomina n;
    QString lineas, contadores;
  } casos[] = {
      {nomina({2000, 600, 700, 300, 50, 100, 1450}),
       "1|0|D|2000|Nomina Pérez, 1|1|D|600|S.S.Emp+TR Pérez, 1|2|H|-700|S.S.Acreedora Pérez, "
       "1|3|H|-300|Retencion Pérez, 1|4|H|-50|Anticipos Pérez, 1|5|H|-100|Rem.P.P. Pérez, "
       "1|6|H|-1450|Nomina Pérez",
       "2|7"},
      {nomina({1000, 0, 0, 0.004, 0, 0, 1000}), "2|0|D|1000|Nomina Pérez, 2|6|H|-1000|Nomina Pérez",
       "3|9"},
      // A payroll given back, joined to an asiento that stands.
      {[] {
         Nomina n = nomina({-10, 0, 0, 0, 0, 0, -10});
         n.ApunteN = "7";
         n.NombreEmpleado = QString(60, 'x');
         return n;
       }(),
       "7|0|D|-10|Nomina " + QString(43, 'x') + ", 7|6|H|10|Nomina " + QString(43, 'x'), "3|11"},
  };
  int desde = 0;
  for (const auto& caso : casos) {
    const AsientoGrabado grabado = acepta(caso.n);
    QStringList lineas;
    for (const QString& f :
         filas("Select NAsiento, Subcuenta, DH, Importe, Descripcion, Fecha from "
               "Diario order by NLinea")
             .mid(desde)) {
      EXPECT_EQ(f.section('|', 5), "31/01/2024");
      lineas << f.section('|', 0, 0) + '|' + f.section('|', 1, 1).right(1) + '|' +
                    f.section('|', 2, 4);
    }
    desde += grabado.apuntes;
    EXPECT_EQ(lineas.join(", "), caso.lineas);
    EXPECT_EQ(contadores(), caso.contadores);
  }
}

TEST(Nomina, ElTotalYElCuadreSinTolerancia) {
  Nomina n;
  n.parte(SueldoBruto).Importe = 1234.56;
  n.parte(SSCargoEmpresa).Importe = 0.1;
  n.parte(OrganismosSS).Importe = 5;
  n.CargoTrabajador = 0.2;
  n.parte(SSCargoEmpresa).Marcada = false;
  CalculoTotal(n);
  EXPECT_EQ(n.parte(OrganismosSS).Importe, 5);
  n.parte(SSCargoEmpresa).Marcada = true;
  CalculoTotal(n);
  n.parte(OrganismosSS).Importe = 0.3;
  n.parte(Caja).Importe = 1234.36;
  EXPECT_TRUE(cuadra(n));  // though 0,1 + 0,2 isn't 0,3 in a double
  n.parte(Caja).Importe = 1234.361;
  EXPECT_FALSE(cuadra(n));
  // The greatest that a box takes, a cent off.
  n.parte(SueldoBruto).Importe = 999999999999.99;
  n.parte(Caja).Importe = 999999999999.78;
  EXPECT_FALSE(cuadra(n));
  n.parte(Caja).Importe = 999999999999.79;
  EXPECT_TRUE(cuadra(n));
}

}  // namespace
