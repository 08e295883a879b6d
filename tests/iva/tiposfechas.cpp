// Rates with their dates: what is told of an invoice, and which codes they take.
#include "iva/tiposfechas.h"

#include "soporte/libros.h"

namespace {

TEST(TiposPorFechas, SeAvisaDelQueNoRigeEnSuFecha) {
  const TiposPorFechas tipos;
  const QDate marzo(2024, 3, 15), octubre(2024, 10, 3), enero(2025, 1, 1);
  const struct {
    double iva, recargo;
    QDate fecha;
    const char* aviso;
  } casos[] = {
      {21, 0, marzo, ""},
      {21, 5.2, marzo, ""},
      {21, 1.75, marzo, ""},
      {4, 0.5, enero, ""},
      {5, 0, marzo, ""},
      {7.5, 1, octubre, ""},
      {0, 0, octubre, ""},
      {21, 4, marzo, "Con el 21 % de IVA no va el 4 % de recargo el 15/03/2024"},
      {7.5, 0, enero, "El 7,5 % de IVA rigió del 01/10/2024 al 31/12/2024, no el 01/01/2025"},
      {16, 0, marzo,
       "El 16 % de IVA rigió hasta el 30/06/2010, no el 15/03/2024 (fechas sin confirmar)"},
      {20, 0, marzo, "El 20 % de IVA no está en la tabla de tipos"},
  };
  for (const auto& c : casos)
    EXPECT_EQ(tipos.aviso(c.iva, c.recargo, c.fecha), QString::fromUtf8(c.aviso));
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
