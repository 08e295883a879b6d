#include "company/semillas.h"

#include "common/ignorar.h"
#include "company/datosempresa.h"
#include "engine/dbengine.h"
#include "engine/filas.h"

namespace {

struct Nivel01 {
  const char* NNivel;
  const char* Descripcion;
  const char* ActPas;
};

// Kept: groups 6 and 7 are on no side of the balance, for there is no third row in ActPas; so the
// balance leaves them out.
constexpr Nivel01 kNivel01[] = {
    {"1", "Financiacion Basica", "2"},
    {"2", "Inmovilizado", "1"},
    {"3", "Existencias", "1"},
    {"4", "Acreedores y deudores por operaciones de tráfico", "2"},
    {"5", "Cuentas financieras", "2"},
    {"6", "Compras y gastos", "3"},
    {"7", "Ventas e ingresos", "3"},
};

struct Nivel02 {
  const char* NNivel;
  const char* Descripcion;
};

constexpr Nivel02 kNivel02[] = {
    {"10", "Capital"},
    {"11", "Reservas"},
    {"12", "Resultados pendientes de aplicación"},
    {"13", "Ingresos a distribuir en varios ejercicios"},
    {"14", "Provisiones para riesgos y gastos"},
    {"15", "Emprestitos y otras deudas analogas"},
    {"16", "Deudas a L.P. con empresas grupo y asociadas"},
    {"17", "Deudas a L.P. por prest.recib.otros conceptos"},
    {"18", "Fianzas y depositos recibidos a largo plazo"},
    {"19", "Situaciones transitorias de financiacion"},
    {"20", "Gastos de establecimiento"},
    {"21", "Inmovilizaciones inmateriales"},
    {"22", "Inmovilizaciones materiales"},
    {"23", "Inmovilizaciones materiales en curso"},
    {"24", "Inversiones financ.en emp.grupo y asociadas"},
    {"25", "Otras inversiones financieras permanentes"},
    {"26", "Fianzas y depositos constituidos a L.plazo"},
    {"27", "Gastos a distribuir en varios ejercicios"},
    {"28", "Amortización acumulada del inmobilizado"},
    {"29", "Provisiones de inmobilizado"},
    {"30", "Comerciales"},
    {"31", "Materias primas"},
    {"32", "Otros aprovisionamientos"},
    {"33", "Producto en curso"},
    {"34", "Productos semiterminado"},
    {"35", "Productos terminados"},
    {"36", "Subproductos, residuos y mat.recuperados"},
    {"39", "Provisiones por depreciacion de existencias"},
    {"40", "Proveedores"},
    {"41", "Acreedores varios"},
    {"43", "Clientes"},
    {"44", "Deudores varios"},
    {"46", "Personal"},
    {"47", "Administraciones publicas"},
    {"48", "Ajustes por periodificación"},
    {"49", "Provisiones por operaciones de tráfico"},
    {"50", "Emprestitos y otras emisiones analogas a C.P."},
    {"51", "Deudas a corto plazo con emp.grupo y asociadas"},
    {"52", "Deudas a c.p. por prestamos recibidos otros conceptos"},
    {"53", "Invs.financieras a c.p. en emp.grupo y asociadas"},
    {"54", "Otras inversiones financieras temporales"},
    {"55", "Otras cuentas no bancarias"},
    {"56", "Fianzas y depositos recibidos y constituidos a C.P."},
    {"57", "Tesoreria"},
    {"58", "Ajustes por periodificacion"},
    {"59", "Provisiones financieras"},
    {"60", "Compras"},
    {"61", "Variaciones de existencias"},
    {"62", "Servicios exteriores"},
    {"63", "Tributos"},
    {"64", "Gastos de personal"},
    {"65", "Otros gastos de gestión"},
    {"66", "Gastos financieros"},
    {"67", "Perdidas procedentes Inmv. y Gtos. excepcionales"},
    {"68", "Dotaciones para amortizaciones"},
    {"69", "Dotaciones a las provisiones"},
    {"70", "Ventas mercaderias, de producción propia, servicios"},
    {"71", "Variacion de existencias"},
    {"73", "Trabajos realizados para la empresa"},
    {"74", "Subvenciones a la explotacion"},
    {"75", "Otros ingresos"},
    {"76", "Ingresos financieros"},
    {"77", "Benef.Procedente del Inmv. e Ingr. excepcionales"},
    {"79", "Excesos y aplicaciones de provisiones"},
};

struct TipoIVA {
  const char* Codigo;
  const char* Descripcion;
  const char* IVA;
  const char* RE;
};

constexpr TipoIVA kTiposIVA[] = {
    {"01", "Super reducido S/R", "4", "0"},   {"02", "Reducido S/R", "7", "0"},
    {"03", "Normal S/R", "16", "0"},          {"04", "Lujo S/R", "24", "0"},
    {"05", "Super reducido C/R", "4", "0,5"}, {"06", "Reducido C/R", "7", "1"},
    {"07", "Normal C/R", "16", "4"},          {"08", "Lujo C/R", "24", "6"},
};

constexpr int kLineas = 99;  // of the grids that the user fills

QString dosCifras(int numero) {
  return QString::number(numero).rightJustified(2, u'0');
}

// Adds a row with these values from the first field on.
void anade(Recordset& tabla, std::initializer_list<Variant> valores) {
  tabla.AddNew();
  completa(tabla, [&] {
    int ordinal = 0;
    for (const Variant& valor : valores) tabla.Fields(ordinal++) = valor;
  });
}

// The same, passing over a row that can't be written.
void anadeSiPuede(Recordset& tabla, std::initializer_list<Variant> valores) {
  ignorando([&] { anade(tabla, valores); });
}

// Lines that hold only their code.
void siembraCodigos(Recordset& tabla, int desde) {
  for (int n = desde; n <= kLineas; ++n) anadeSiPuede(tabla, {dosCifras(n)});
}

}  // namespace

void siembraNivel01(Database& base) {
  const auto tabla = base.OpenRecordset(QStringLiteral("Nivel01"));
  for (const Nivel01& fila : kNivel01) anade(*tabla, {fila.NNivel, fila.Descripcion, fila.ActPas});
}

void siembraNivel02(Database& base) {
  const auto tabla = base.OpenRecordset(QStringLiteral("Nivel02"));
  for (const Nivel02& fila : kNivel02) {
    const QString nivel = QLatin1String(fila.NNivel);
    anade(*tabla, {nivel, fila.Descripcion, nivel.left(1)});
  }
}

void siembraActPas(Database& base) {
  const auto tabla = base.OpenRecordset(QStringLiteral("ActPas"));
  anade(*tabla, {"1", "Activo"});
  anade(*tabla, {"2", "Pasivo"});
}

void siembraConceptos(Database& base) {
  const auto tabla = base.OpenRecordset(QStringLiteral("Conceptos"));
  siembraCodigos(*tabla, 1);
}

void siembraTiposIVA(Database& base) {
  const auto tabla = base.OpenRecordset(QStringLiteral("TiposIVA"));
  for (const TipoIVA& fila : kTiposIVA)
    anadeSiPuede(*tabla, {fila.Codigo, fila.Descripcion, fila.IVA, fila.RE});
  siembraCodigos(*tabla, static_cast<int>(std::size(kTiposIVA)) + 1);
}

void siembraTipoRecibos(Database& base) {
  const auto tabla = base.OpenRecordset(QStringLiteral("TipoRecibos"));
  siembraCodigos(*tabla, 1);
}

void siembraSubcuentasEspeciales(Database& base, int digitosCuenta, int digitosSubcuenta,
                                 const DatosEmpresa& datos) {
  const struct {
    const QString& codigo;
    const char* descripcion;
  } especiales[] = {
      {datos.IVARSub, "Iva repercutido"},
      {datos.IVARRE, "R.E. en Iva repercutido"},
      {datos.IVARVen, "Ventas"},
      {datos.IVASSub, "Iva soportado"},
      {datos.IVASRE, "R.E. en Iva soportado"},
      {datos.IVASCom, "Compras"},
  };
  const auto tabla = base.OpenRecordset(QStringLiteral("Subcuentas"));
  for (const auto& especial : especiales)
    anade(*tabla, {especial.codigo, especial.codigo.left(digitosCuenta), especial.descripcion});

  // Kept: the two codes of this row are each built with the width of the other. The longer one
  // doesn't fit and stays empty, and the row counts with what is left.
  const auto codigo = [](int digitos) {
    return QStringLiteral("61") + QString(digitos - 3, u'0') + u'1';
  };
  ignorando([&] {
    tabla->AddNew();
    completa(*tabla, [&] {
      ignorando([&] { tabla->Fields(QStringLiteral("Subcuenta")) = codigo(digitosCuenta); });
      ignorando([&] { tabla->Fields(QStringLiteral("Cuenta")) = codigo(digitosSubcuenta); });
      ignorando(
          [&] { tabla->Fields(QStringLiteral("Descripcion")) = "Regularización existencias"; });
    });
  });
}
