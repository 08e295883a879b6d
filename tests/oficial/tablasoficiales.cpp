// The tables that a company's file gets when they are first used.
#include "oficial/tablasoficiales.h"

#include "soporte/libros.h"

namespace {

TEST(TablasOficiales, CadaUnaSeHaceAlUsarlaYUnaVez) {
  Libros libros;
  libros.creaEmpresa(Libros::datosPorDefecto("Ancha", 4, 10));
  const auto ancha = libros.abre("Ancha");
  for (const TablaDeEmpresa& tabla : tablasOficiales()) {
    const QString nombre = QLatin1String(tabla.nombre);
    SCOPED_TRACE(nombre.toStdString());
    EXPECT_EQ(leeTablaOficial(*ancha, nombre, "Select * from " + nombre), nullptr);
    for (int vez = 0; vez < 2; ++vez) aseguraTablaOficial(*ancha, nombre);
    EXPECT_TRUE(leeTablaOficial(*ancha, nombre, "Select * from " + nombre)->Eof());
    const TableDef hecha = ancha->tableDef(nombre);
    for (size_t i = 0; i < tabla.campos.size(); ++i) {
      const int suyo = tabla.campos[i].ancho;
      EXPECT_EQ(hecha.Fields[i].Size, suyo == ancho::kSubcuenta ? 10
                                      : suyo == ancho::kCuenta  ? 4
                                                                : suyo);
    }
  }
  EXPECT_ERROR(err::kElementoNoEncontrado, aseguraTablaOficial(*ancha, "Diario"));
}

}  // namespace
