#include "company/tablas.h"

#include "common/errorejecucion.h"

#include <span>

namespace {

// Widths that are the company's own.
constexpr int kCuenta = -1;
constexpr int kSubcuenta = -2;

struct Campo {
  const char* nombre;
  FieldType tipo;
  int ancho = 0;
  const char* porDefecto = "";
};

constexpr Campo kEmpresa[] = {
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

constexpr Campo kSubcuentas[] = {
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

constexpr Campo kCuentas[] = {
    {"Cuenta", FieldType::Text, kCuenta},    {"Descripcion", FieldType::Text, 75},
    {"GrupoN", FieldType::Text, 1},          {"SubGrupoN", FieldType::Text, 2},
    {"DatosAuxiliares", FieldType::Boolean},
};

constexpr Campo kDiario[] = {
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

constexpr Campo kConceptos[] = {
    {"NConcepto", FieldType::Text, 2},
    {"Descripcion", FieldType::Text, 50},
};

constexpr Campo kNivel01[] = {
    {"NNivel", FieldType::Text, 1},
    {"Descripcion", FieldType::Text, 50},
    {"ActPas", FieldType::Text, 1},
};

constexpr Campo kNivel02[] = {
    {"NNivel", FieldType::Text, 2},
    {"Descripcion", FieldType::Text, 80},
    {"NNivel01", FieldType::Text, 1},
};

constexpr Campo kTiposIVA[] = {
    {"Codigo", FieldType::Text, 2},
    {"Descripcion", FieldType::Text, 50},
    {"IVA", FieldType::Double, 0, "0"},
    {"RE", FieldType::Double, 0, "0"},
};

constexpr Campo kRSIVA[] = {
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

constexpr Campo kActPas[] = {
    {"ActPas", FieldType::Text, 1},
    {"Descripcion", FieldType::Text, 50},
};

constexpr Campo kRecibos[] = {
    {"Vencimiento", FieldType::Date}, {"Subcuenta", FieldType::Text, kSubcuenta},
    {"Titulo", FieldType::Text, 100}, {"Factura", FieldType::Text, 50},
    {"Tipo", FieldType::Text, 50},    {"Banco", FieldType::Text, kSubcuenta},
    {"Importe", FieldType::Double},   {"CA", FieldType::Text, 10},
    {"FraZuri", FieldType::Text, 50},
};

constexpr Campo kTipoRecibos[] = {
    {"Codigo", FieldType::Text, 2},
    {"Tipo", FieldType::Text, 50},
};

struct Tabla {
  const char* nombre;
  std::span<const Campo> campos;
  bool conClave;  // the first field; equal receipts may stand side by side
};

const Tabla kTablas[] = {
    {"Empresa", kEmpresa, true},     {"Subcuentas", kSubcuentas, true},
    {"Cuentas", kCuentas, true},     {"Diario", kDiario, true},
    {"Conceptos", kConceptos, true}, {"Nivel01", kNivel01, true},
    {"Nivel02", kNivel02, true},     {"TiposIVA", kTiposIVA, true},
    {"RSIVA", kRSIVA, true},         {"ActPas", kActPas, true},
    {"Recibos", kRecibos, false},    {"TipoRecibos", kTipoRecibos, false},
};

}  // namespace

QStringList nombresDeTablas() {
  QStringList nombres;
  for (const Tabla& tabla : kTablas) nombres += QString::fromUtf8(tabla.nombre);
  return nombres;
}

TableDef definicionDeTabla(const QString& nombre, int digitosCuenta, int digitosSubcuenta) {
  for (const Tabla& tabla : kTablas) {
    if (nombre.compare(QLatin1String(tabla.nombre), Qt::CaseInsensitive) != 0) continue;
    TableDef definicion;
    definicion.Name = QString::fromUtf8(tabla.nombre);
    for (const Campo& campo : tabla.campos) {
      const int ancho = campo.ancho == kCuenta      ? digitosCuenta
                        : campo.ancho == kSubcuenta ? digitosSubcuenta
                                                    : campo.ancho;
      Field& field = definicion.CreateField(QString::fromUtf8(campo.nombre), campo.tipo, ancho);
      field.DefaultValue = QString::fromUtf8(campo.porDefecto);
      field.AllowZeroLength = campo.tipo == FieldType::Text;
    }
    if (tabla.conClave) {
      const QString& clave = definicion.Fields.front().Name;
      definicion.Indexes.push_back({clave, true, true, {clave}});
    }
    return definicion;
  }
  throw ErrorEjecucion(err::kElementoNoEncontrado, nombre);
}
