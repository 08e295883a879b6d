#include "oficial/tablasoficiales.h"

#include <algorithm>

#include "common/errorejecucion.h"

namespace {

// What was typed for a row of the registers of IVA beyond what it tells by itself; what is empty is
// derived. Renumbering gives a row another code, so its invoice stands here too.
constexpr CampoDeTabla kDatosRegistros[] = {
    {"Codigo", FieldType::Text, 11},       {"CliPro", FieldType::Text, ancho::kSubcuenta},
    {"Factura", FieldType::Text, 20},      {"Fecha", FieldType::Date},
    {"TipoFactura", FieldType::Text, 2},   {"Clave", FieldType::Text, 2},
    {"Calificacion", FieldType::Text, 2},  {"Exenta", FieldType::Text, 2},
    {"BienInversion", FieldType::Text, 1}, {"Inversion", FieldType::Text, 1},
    {"TipoNif", FieldType::Text, 2},       {"Pais", FieldType::Text, 2},
    {"Nif", FieldType::Text, 20},          {"Nombre", FieldType::Text, 40},
    {"FechaOperacion", FieldType::Date},   {"Base", FieldType::Double},
    {"Deducible", FieldType::Double},      {"Retencion", FieldType::Text, 1},
    {"Local", FieldType::Text, 1},
};

// Who declares, as a list of data by their names.
constexpr CampoDeTabla kDeclarante[] = {
    {"Dato", FieldType::Text, 60},
    {"Valor", FieldType::Text, 100},
};

// Casillas of a 303: "M" as typed by hand, "P" as they were when it was filed.
constexpr CampoDeTabla kModelo303[] = {
    {"Ejercicio", FieldType::Long},  {"Periodo", FieldType::Text, 2},
    {"Casilla", FieldType::Text, 4}, {"Clase", FieldType::Text, 1},
    {"Importe", FieldType::Double},
};

// What was typed for a third party of the 347, by its side and its NIF or, without one, its
// subcuenta.
constexpr CampoDeTabla kModelo347[] = {
    {"Clave", FieldType::Text, 1},     {"Tercero", FieldType::Text, 20},
    {"Metalico", FieldType::Double},   {"EjercicioMetalico", FieldType::Long},
    {"Provincia", FieldType::Text, 2}, {"Pais", FieldType::Text, 2},
    {"Excluido", FieldType::Boolean},
};

// The premises let of the 347, as its record has them.
constexpr CampoDeTabla kInmuebles347[] = {
    {"Nif", FieldType::Text, 12},
    {"Nombre", FieldType::Text, 40},
    {"Importe", FieldType::Double},
    {"Situacion", FieldType::Text, 1},
    {"Referencia", FieldType::Text, 25},
    {"TipoVia", FieldType::Text, 5},
    {"Via", FieldType::Text, 50},
    {"Numeracion", FieldType::Text, 3},
    {"Numero", FieldType::Text, 5},
    {"Calificador", FieldType::Text, 3},
    {"Bloque", FieldType::Text, 3},
    {"Portal", FieldType::Text, 3},
    {"Escalera", FieldType::Text, 3},
    {"Planta", FieldType::Text, 3},
    {"Puerta", FieldType::Text, 3},
    {"Complemento", FieldType::Text, 40},
    {"Localidad", FieldType::Text, 30},
    {"Municipio", FieldType::Text, 30},
    {"CodigoMunicipio", FieldType::Text, 5},
    {"Provincia", FieldType::Text, 2},
    {"CP", FieldType::Text, 5},
};

// What was typed for the lines of an official statement, by the months that it is of: "B" the
// balance sheet, "R" the results.
constexpr CampoDeTabla kDesglosesEstados[] = {
    {"Estado", FieldType::Text, 1}, {"Linea", FieldType::Long},     {"Desde", FieldType::Long},
    {"Hasta", FieldType::Long},     {"Importe", FieldType::Double},
};

// What the bank's statements brought. A movement keeps the line of the journal that proves it, and
// the day when it was accepted.
constexpr CampoDeTabla kMovimientosBanco[] = {
    {"Numero", FieldType::Long},          {"Ccc", FieldType::Text, 20},
    {"Operacion", FieldType::Date},       {"Valor", FieldType::Date},
    {"Comun", FieldType::Text, 2},        {"Propio", FieldType::Text, 3},
    {"Importe", FieldType::Double},       {"Documento", FieldType::Text, 10},
    {"Referencia1", FieldType::Text, 12}, {"Referencia2", FieldType::Text, 16},
    {"Ordinal", FieldType::Long},         {"Concepto", FieldType::Text, 255},
    {"Apunte", FieldType::Long},          {"Conciliado", FieldType::Date},
};

// The bank's accounts and the subcuenta of each.
constexpr CampoDeTabla kCuentasBanco[] = {
    {"Ccc", FieldType::Text, 20},
    {"Subcuenta", FieldType::Text, ancho::kSubcuenta},
};

// The balances of each statement.
constexpr CampoDeTabla kExtractosBanco[] = {
    {"Ccc", FieldType::Text, 20},   {"Desde", FieldType::Date},   {"Hasta", FieldType::Date},
    {"Inicial", FieldType::Double}, {"Final", FieldType::Double},
};

// Where a movement goes by the words of its concept.
constexpr CampoDeTabla kReglasBanco[] = {
    {"Palabras", FieldType::Text, 60},
    {"Subcuenta", FieldType::Text, ancho::kSubcuenta},
};

constexpr TablaDeEmpresa kTablas[] = {
    {"DatosRegistros", kDatosRegistros, 0},
    {"Declarante", kDeclarante, 1},
    {"Modelo303", kModelo303, 4},
    {"Modelo347", kModelo347, 2},
    {"Inmuebles347", kInmuebles347, 0},
    {"DesglosesEstados", kDesglosesEstados, 4},
    {"MovimientosBanco", kMovimientosBanco, 1},
    {"CuentasBanco", kCuentasBanco, 1},
    {"ExtractosBanco", kExtractosBanco, 0},
    {"ReglasBanco", kReglasBanco, 1},
};

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
  aseguraTabla(empresa, *tabla);
}

std::unique_ptr<Recordset> leeTablaOficial(Database& empresa, const QString& nombre,
                                           const QString& sentencia) {
  return tieneTablaOficial(empresa, nombre) ? empresa.OpenRecordset(sentencia) : nullptr;
}
