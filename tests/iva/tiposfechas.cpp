// Rates with their dates: what is told of an invoice, and which codes they take.
#include "iva/tiposfechas.h"

#include "soporte/libros.h"

namespace {

TEST(TiposPorFechas, SeAvisaDelQueNoRigeEnSuFecha) {
  const TiposPorFechas tipos;
  for (const QStringList& f : leeCsv("tiposporfechas.csv"))
    EXPECT_EQ(tipos.aviso(f[0].toDouble(), f[1].toDouble(), QDate::fromString(f[2], "dd/MM/yyyy")),
              f[3])
        << qPrintable(f.join(';'));
}

TEST(TiposPorFechas, LosDelDiaTomanCodigosLibresYUnaSolaVez) {
  Libros libros;
  const auto empresa = libros.abre();
  const QDate dia(2025, 2, 1);
  const TiposPuestos puestos = ponTiposEnVigor(*empresa, TiposPorFechas(), dia);
  // 4 % with and without its recargo were there; code 09 is the first without a name.
  EXPECT_EQ(puestos.codigos.first(), "09");
  EXPECT_EQ(puestos.sinCodigo, 0);
  const QStringList filas = libros.filas(
      "Select IVA, RE from TiposIVA where Codigo >= '09' and Descripcion <> '' order by Codigo");
  EXPECT_EQ(filas,
            (QStringList{"21|0", "21|5,2", "21|1,75", "10|0", "10|1,4", "0|0", "12|0", "10,5|0"}));
  EXPECT_TRUE(ponTiposEnVigor(*empresa, TiposPorFechas(), dia).codigos.isEmpty());
  // A company that keeps its own table is judged by that.
  aseguraTiposPorFechas(*empresa);
  const QString suya = "Select * from TiposPorFechas where IVA=21 and Hasta is Null";
  while (!libros.filas(suya).isEmpty()) libros.cambia(suya, "Hasta", QDate(2025, 1, 31));
  EXPECT_FALSE(TiposPorFechas(*empresa).aviso(21, 0, dia).isEmpty());
  EXPECT_TRUE(TiposPorFechas(*empresa).aviso(21, 0, dia.addDays(-1)).isEmpty());
}

}  // namespace
