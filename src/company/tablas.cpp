#include "company/tablas.h"

#include "common/errorejecucion.h"
#include "engine/dbengine.h"

namespace {

using ancho::kCuenta;
using ancho::kSubcuenta;

constexpr CampoDeTabla kEmpresa[] = {
    {"IdCodigo", FieldType::Long, 0, "1"},
    {"NombreEmpresa", FieldType::Text, 50},
    {"Año", FieldType::Long},
    {"FechaCreacion", FieldType::Date},
    {"Direccion", FieldType::Text, 40},
    {"Provincia", FieldType::Text, 35},
    {"CP", FieldType::Text, 5},
    {"Poblacion", FieldType::Text, 35},
    {"Pais", FieldType::Text, 35},
    {"Nif", FieldType::Long},
    {"Telefono", FieldType::Text, 15},
    {"Fax", FieldType::Text, 15},
    {"Gerente", FieldType::Text, 35},
    {"CapitalSocial", FieldType::Double},
    {"MayorN01", FieldType::Long},
    {"SubCuN01", FieldType::Long},
    {"IVASSub", FieldType::Text, kSubcuenta},
    {"IVASPro", FieldType::Text, kCuenta},
    {"IVASCom", FieldType::Text, kSubcuenta},
    {"IVARSub", FieldType::Text, kSubcuenta},
    {"IVARCli", FieldType::Text, kCuenta},
    {"IVARVen", FieldType::Text, kSubcuenta},
    {"MesInicio", FieldType::Long},
    {"NoModificar", FieldType::Date},
    {"Asiento", FieldType::Long},
    {"Limpiar", FieldType::Boolean},
    {"Controlar", FieldType::Boolean},
    {"Mascara", FieldType::Text, 20},
    {"Simbolo", FieldType::Text, 5},
    {"NLinDiario", FieldType::Long, 0, "0"},
    {"NLinIVAS", FieldType::Long, 0, "0"},
    {"NLinIVAR", FieldType::Long, 0, "0"},
    {"IVASRE", FieldType::Text, kSubcuenta},
    {"IVARRE", FieldType::Text, kSubcuenta},
};

constexpr CampoDeTabla kSubcuentas[] = {
    {"Subcuenta", FieldType::Text, kSubcuenta},
    {"Cuenta", FieldType::Text, kCuenta},
    {"Descripcion", FieldType::Text, 50},
    {"Direccion", FieldType::Text, 40},
    {"Provincia", FieldType::Text, 35},
    {"CP", FieldType::Text, 5},
    {"Poblacion", FieldType::Text, 35},
    {"Pais", FieldType::Text, 35},
    {"Nif", FieldType::Text, 15},
    {"Telefono", FieldType::Text, 15},
    {"Fax", FieldType::Text, 15},
    {"Gerente", FieldType::Text, 35},
};

constexpr CampoDeTabla kCuentas[] = {
    {"Cuenta", FieldType::Text, kCuenta},    {"Descripcion", FieldType::Text, 75},
    {"GrupoN", FieldType::Text, 1},          {"SubGrupoN", FieldType::Text, 2},
    {"DatosAuxiliares", FieldType::Boolean},
};

constexpr CampoDeTabla kDiario[] = {
    {"NLinea", FieldType::Long},
    {"NAsiento", FieldType::Long},
    {"Fecha", FieldType::Date},
    {"Subcuenta", FieldType::Text, kSubcuenta},
    {"Descripcion", FieldType::Text, 50},
    {"DH", FieldType::Text, 1},
    {"Importe", FieldType::Double},
    {"Punteo", FieldType::Text, 1},
    {"ApunteIVA", FieldType::Text, 11},
    {"ApunteCartera", FieldType::Long},
    {"Saldo", FieldType::Double},
    {"FacturaZuri", FieldType::Text, 60},
    {"TipoFactura", FieldType::Text, 1},
    {"TipoDiario", FieldType::Text, 1, "\"1\""},
    {"EmpresaZuri", FieldType::Text, 100},
};

constexpr CampoDeTabla kConceptos[] = {
    {"NConcepto", FieldType::Text, 2},
    {"Descripcion", FieldType::Text, 50},
};

constexpr CampoDeTabla kNivel01[] = {
    {"NNivel", FieldType::Text, 1},
    {"Descripcion", FieldType::Text, 50},
    {"ActPas", FieldType::Text, 1},
};

constexpr CampoDeTabla kNivel02[] = {
    {"NNivel", FieldType::Text, 2},
    {"Descripcion", FieldType::Text, 80},
    {"NNivel01", FieldType::Text, 1},
};

constexpr CampoDeTabla kTiposIVA[] = {
    {"Codigo", FieldType::Text, 2},
    {"Descripcion", FieldType::Text, 50},
    {"IVA", FieldType::Double, 0, "0"},
    {"RE", FieldType::Double, 0, "0"},
};

constexpr CampoDeTabla kRSIVA[] = {
    {"Codigo", FieldType::Text, 11},
    {"CliPro", FieldType::Text, kSubcuenta},
    {"Factura", FieldType::Text, 20},
    {"Base", FieldType::Double},
    {"TipoIVA", FieldType::Text, 2},
    {"Asiento", FieldType::Long},
    {"CtaIVA", FieldType::Text, kSubcuenta},
    {"FechaC", FieldType::Date},
    {"Fecha", FieldType::Date},
    {"CtaRE", FieldType::Text, kSubcuenta},
    {"CtaCon", FieldType::Text, kSubcuenta},
    {"IVA", FieldType::Double},
    {"Recargo", FieldType::Double},
    {"PorcenIVA", FieldType::Double},
    {"PorcenREC", FieldType::Double},
    {"Neto", FieldType::Double},
};

constexpr CampoDeTabla kActPas[] = {
    {"ActPas", FieldType::Text, 1},
    {"Descripcion", FieldType::Text, 50},
};

constexpr CampoDeTabla kRecibos[] = {
    {"Vencimiento", FieldType::Date}, {"Subcuenta", FieldType::Text, kSubcuenta},
    {"Titulo", FieldType::Text, 100}, {"Factura", FieldType::Text, 50},
    {"Tipo", FieldType::Text, 50},    {"Banco", FieldType::Text, kSubcuenta},
    {"Importe", FieldType::Double},   {"CA", FieldType::Text, 10},
    {"FraZuri", FieldType::Text, 50},
};

constexpr CampoDeTabla kTipoRecibos[] = {
    {"Codigo", FieldType::Text, 2},
    {"Tipo", FieldType::Text, 50},
};

// Equal receipts may stand side by side.
const TablaDeEmpresa kTablas[] = {
    {"Empresa", kEmpresa, 1}, {"Subcuentas", kSubcuentas, 1}, {"Cuentas", kCuentas, 1},
    {"Diario", kDiario, 1},   {"Conceptos", kConceptos, 1},   {"Nivel01", kNivel01, 1},
    {"Nivel02", kNivel02, 1}, {"TiposIVA", kTiposIVA, 1},     {"RSIVA", kRSIVA, 1},
    {"ActPas", kActPas, 1},   {"Recibos", kRecibos, 0},       {"TipoRecibos", kTipoRecibos, 0},
};

}  // namespace

std::span<const TablaDeEmpresa> tablasDeEmpresa() {
  return kTablas;
}

TableDef definicionDeTabla(const TablaDeEmpresa& tabla, int digitosCuenta, int digitosSubcuenta) {
  TableDef definicion;
  definicion.Name = QString::fromUtf8(tabla.nombre);
  for (const CampoDeTabla& campo : tabla.campos) {
    const int ancho = campo.ancho == kCuenta      ? digitosCuenta
                      : campo.ancho == kSubcuenta ? digitosSubcuenta
                                                  : campo.ancho;
    Field& field = definicion.CreateField(QString::fromUtf8(campo.nombre), campo.tipo, ancho);
    field.DefaultValue = QString::fromUtf8(campo.porDefecto);
    field.AllowZeroLength = campo.tipo == FieldType::Text;
  }
  if (tabla.clave == 0) return definicion;
  Index clave{definicion.Fields.front().Name, true, true, {}};
  for (const Field& campo : std::span(definicion.Fields).first(size_t(tabla.clave)))
    clave.Fields += campo.Name;
  definicion.Indexes.push_back(clave);
  return definicion;
}

void aseguraTabla(Database& empresa, const TablaDeEmpresa& tabla) {
  if (empresa.TableDefs().contains(QLatin1String(tabla.nombre), Qt::CaseInsensitive)) return;
  const auto anchoDe = [&](const char* nombre) {
    return empresa.tableDef(QLatin1String(nombre)).Fields.front().Size;
  };
  try {
    empresa.appendTable(definicionDeTabla(tabla, anchoDe("Cuentas"), anchoDe("Subcuentas")));
  } catch (const ErrorEjecucion& e) {
    if (e.numero() != err::kTablaYaExiste) throw;
  }
}
