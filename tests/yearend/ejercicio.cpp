// The steps of the year-end, row by row.
#include "yearend/ejercicio.h"

#include "soporte/libros.h"

namespace {

class Ejercicio : public testing::Test, protected Libros {
 protected:
  Ejercicio() : empresa(abre()) {}

  // Lines "subcuenta importe", posted in one asiento; the amount's sign is its side.
  void asienta(const QStringList& lineas) {
    const auto diario = empresa->OpenRecordset("Diario");
    for (const QString& linea : lineas)
      anade(*diario, lineaDe(-1 - diario->rowTotal(), 1, "02/05/2024", linea.section(' ', 0, 0),
                             linea.section(' ', 1)));
  }
  QStringList lineas(const QString& tipo) {
    return filas(
        "Select NLinea, NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe from Diario "
        "where TipoDiario='" +
        tipo + "' order by NLinea");
  }
  QString contadores() { return filas("Select Asiento, NLinDiario from Empresa").first(); }
  QString limite() { return filas("Select NoModificar from Empresa").first(); }

  std::unique_ptr<Database> empresa;
  QList<int> avances;
  const Avance avance = [this](int fila, int total) {
    EXPECT_LT(fila, total);
    avances << fila;
  };
  AsientoGrabado grabado;
  PasoAnual paso = {"7", "31/12/2024", "Fin", "#,##0.00 ;-#,##0.00"};
};

TEST_F(Ejercicio, CadaSubcuentaDelGrupoVaAlResultado) {
  asienta({"60000001 1500,255", "62000001 10", "62000001 -10", "63000001 -2,5", "57000001 99"});
  barreGrupo(*empresa, '6', "12900000", paso, avance);
  // The one without balance too; what the mask rounds away stays where it was.
  EXPECT_EQ(lineas("B"), (QStringList{
                             "0|7|31/12/2024|60000001|Fin|H|-1500,26",
                             "1|7|31/12/2024|12900000|Fin 60000001|D|1500,26",
                             "2|7|31/12/2024|62000001|Fin|H|0",
                             "3|7|31/12/2024|12900000|Fin 62000001|D|0",
                             "4|7|31/12/2024|63000001|Fin|D|2,5",
                             "5|7|31/12/2024|12900000|Fin 63000001|H|-2,5",
                         }));
  EXPECT_EQ(contadores(), "1|6");  // the number was taken by the caller
  EXPECT_EQ(avances, (QList<int>{0, 1, 2}));
}

TEST_F(Ejercicio, ElCierreDejaACeroYPoneLaFecha) {
  paso.asiento = "99999999";
  asienta({"57200001 1500", "10000000 -1200,5", "43000001 0,004", "60000001 8", "52000001 -0,005"});
  paso.fecha = "30/06/2024";
  cierraEjercicio(*empresa, 2024, paso, avance);
  const QStringList cierre = {
      "0|99999999|30/06/2024|10000000|Fin|D|1200,5",
      "1|99999999|30/06/2024|52000001|Fin|D|0,01",
      "2|99999999|30/06/2024|57200001|Fin|H|-1500",
  };
  EXPECT_EQ(lineas("C"), cierre);
  EXPECT_EQ(contadores(), "1|3");
  EXPECT_EQ(limite(), "31/12/2024");  // whatever the date of its lines
  EXPECT_EQ(avances.size(), 4);       // of groups up to 5

  // A date may be changed for any other, or for none; a second closing only sets it again.
  EXPECT_ERROR(err::kConversionDeDatos, ponFechaDeCierre(*empresa, "nunca"));
  EXPECT_EQ(fechaDeCierre(*empresa), "31/12/2024");
  ponFechaDeCierre(*empresa, "");
  EXPECT_EQ(fechaDeCierre(*empresa), "");
  asienta({"52000001 -0,005"});
  cierraEjercicio(*empresa, 2024, paso, avance);
  EXPECT_EQ(lineas("C"), cierre);
  EXPECT_EQ(limite(), "31/12/2024");
}

// What a closing line carries goes along; its side doesn't matter.
TEST_F(Ejercicio, LaAperturaDaLaVueltaAlCierre) {
  creaEmpresa(datosPorDefecto("Siguiente", 3, 8));
  const auto siguiente = abre("Siguiente");
  paso = {"0", "01/01/2025", "Apertura", "#,##0.00 ;-#,##0.00"};
  abreEjercicio(*empresa, *siguiente, paso, avance, grabado);
  EXPECT_EQ(filas("Diario", "Siguiente"), QStringList());

  asienta({"57200001 -1500", "10000000 1200,5", "43000001 3"});
  const auto diario = empresa->OpenRecordset("Select * from Diario where Importe <> 3");
  for (; !diario->Eof(); diario->MoveNext()) {
    diario->Edit();
    for (const auto& [campo, valor] : Valores{{"TipoDiario", "C"},
                                              {"DH", "H"},
                                              {"Punteo", "V"},
                                              {"ApunteCartera", 12},
                                              {"FacturaZuri", "F-1"}})
      diario->Fields(campo) = valor;
    diario->Update();
  }
  for (int vez = 0; vez < 2; ++vez) abreEjercicio(*empresa, *siguiente, paso, avance, grabado);
  const QString kResto = "-|12|F-1|-|-|A";
  const QStringList apertura = {"0|01/01/2025|57200001|Apertura|D|1500|V|" + kResto,
                                "0|01/01/2025|10000000|Apertura|H|-1200,5|V|" + kResto};
  EXPECT_EQ(filas("Select NAsiento, Fecha, Subcuenta, Descripcion, DH, Importe, Punteo, ApunteIVA, "
                  "ApunteCartera, FacturaZuri, EmpresaZuri, TipoFactura, TipoDiario from Diario "
                  "order by NLinea",
                  "Siguiente"),
            apertura + apertura);
  EXPECT_EQ(filas("Select Asiento, NLinDiario from Empresa", "Siguiente"), QStringList("1|4"));
}

}  // namespace
