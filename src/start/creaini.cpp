#include "start/creaini.h"

#include "engine/dbengine.h"

namespace {

void creaTabla(Database& base, const QString& nombre, const std::vector<Field>& campos) {
  TableDef tabla;
  tabla.Name = nombre;
  tabla.Fields = campos;
  for (Field& campo : tabla.Fields) campo.AllowZeroLength = true;
  base.appendTable(tabla);
  const QString& clave = tabla.Fields.front().Name;
  base.appendIndex(nombre, {clave, true, true, {clave}});
}

}  // namespace

void CrearInicio(DBEngine& motor, const QString& ruta) {
  const auto base = motor.Workspaces(0).CreateDatabase(ruta, QLatin1String(kOrdenGeneral));
  creaTabla(*base, QStringLiteral("Empresas"),
            {{QStringLiteral("NombreEmpresa"), FieldType::Text, 50, {}, false}});
  creaTabla(*base, QStringLiteral("Usuarios"),
            {{QStringLiteral("Nombre"), FieldType::Text, 50, {}, false},
             {QStringLiteral("Password"), FieldType::Text, 8, {}, false}});
  const auto usuarios = base->OpenRecordset(QStringLiteral("Usuarios"));
  usuarios->AddNew();
  usuarios->Fields(QStringLiteral("Nombre")) = "Administrador";
  usuarios->Update();
}
