#include "soporte/gestion.h"

#include "engine/dbengine.h"

namespace {

void tabla(Database& base, const QString& nombre, const std::vector<Field>& campos) {
  TableDef definicion;
  definicion.Name = nombre;
  for (const Field& campo : campos) definicion.Fields.push_back(campo);
  Index clave;
  clave.Name = "Codigo";
  clave.Primary = clave.Unique = true;
  clave.Fields = {"Codigo"};
  definicion.Indexes.push_back(clave);
  base.appendTable(definicion);
}

Field campo(const char* nombre, FieldType tipo, int ancho = 0) {
  Field field;
  field.Name = QLatin1String(nombre);
  field.Type = tipo;
  field.Size = ancho;
  field.AllowZeroLength = true;
  return field;
}

void fila(Recordset& filas, const QList<Variant>& valores) {
  filas.AddNew();
  for (int i = 0; i < valores.size(); ++i) filas.Fields(i) = valores[i];
  filas.Update();
}

}  // namespace

void creaGestion(DBEngine& motor, const QString& dirDatos, bool articulos) {
  using enum FieldType;
  const auto base = motor.Workspaces(0).CreateDatabase(dirDatos + "Gestion.MDB",
                                                       ";LANGID=0x0409;CP=1252;COUNTRY=0");
  tabla(*base, "articulos",
        {campo("Codigo", Text, 15), campo("Descripcion", Text, 50), campo("Comentario", Text, 255),
         campo("IvaSR", Long), campo("IvaCR", Long), campo("Costo", Double),
         campo("MargenPorcentaje", Double), campo("MargenImporte", Double), campo("Tipo", Long),
         campo("Proveedor", Text, 10), campo("Foto", Text, 255)});
  for (const char* nombre : {"proveedores", "clientes"})
    tabla(*base, nombre, {campo("Codigo", Text, 10), campo("Nombre", Text, 50)});
  fila(*base->OpenRecordset("proveedores"), {"P1", "Maderas Duero"});
  fila(*base->OpenRecordset("proveedores"), {"P2", "Aceros del Norte"});
  fila(*base->OpenRecordset("clientes"), {"C1", "Bar D'Ors"});
  if (!articulos) return;
  const auto filas = base->OpenRecordset("articulos");
  fila(*filas, {"0001", "Tablero de pino", "Por metros", 3, 7, 12.5, 20, 0, 2, "P1"});
  fila(*filas, {"0002", "Clavos", {}, 3, 7, 2, 0, 1.5, 1, "P2"});
  fila(*filas, {"0003", "Barniz", {}, 3, 7, 8, 10, 0, 3, "P1"});
  motor.flush();
}
