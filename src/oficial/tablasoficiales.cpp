#include "oficial/tablasoficiales.h"

#include <algorithm>

#include "common/errorejecucion.h"

namespace {

// Which national plan the company's accounts follow. One row.
constexpr CampoDeTabla kPlanOficial[] = {
    {"Plan", FieldType::Text, 10},  // "2007" or "2007 PYMES"
    {"Desde", FieldType::Date},     // when it was sown or the company converted
};

constexpr TablaDeEmpresa kTablas[] = {
    {"PlanOficial", kPlanOficial, 0},
};

int anchoDe(const Database& empresa, const QString& tabla) {
  return empresa.tableDef(tabla).Fields.front().Size;
}

}  // namespace

std::span<const TablaDeEmpresa> tablasOficiales() {
  return kTablas;
}

bool tieneTablaOficial(const Database& empresa, const QString& nombre) {
  return empresa.TableDefs().contains(nombre, Qt::CaseInsensitive);
}

void aseguraTablaOficial(Database& empresa, const QString& nombre) {
  const auto tabla = std::ranges::find_if(kTablas, [&](const TablaDeEmpresa& t) {
    return nombre.compare(QLatin1String(t.nombre), Qt::CaseInsensitive) == 0;
  });
  if (tabla == std::end(kTablas)) throw ErrorEjecucion(err::kElementoNoEncontrado, nombre);
  if (tieneTablaOficial(empresa, nombre)) return;
  try {
    empresa.appendTable(definicionDeTabla(*tabla, anchoDe(empresa, QStringLiteral("Cuentas")),
                                          anchoDe(empresa, QStringLiteral("Subcuentas"))));
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kTablaYaExiste) throw;
  }
}

std::unique_ptr<Recordset> leeTablaOficial(Database& empresa, const QString& nombre,
                                           const QString& sentencia) {
  return tieneTablaOficial(empresa, nombre) ? empresa.OpenRecordset(sentencia) : nullptr;
}
