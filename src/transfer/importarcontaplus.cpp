#include "transfer/importarcontaplus.h"

#include <QFileInfo>
#include <QSet>

#include "common/errorejecucion.h"
#include "common/ignorar.h"
#include "common/rutas.h"
#include "company/datosempresa.h"
#include "company/indices.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "iva/filarsiva.h"
#include "journal/apunte.h"
#include "transfer/lectordbf.h"

namespace {

constexpr QStringView kPrograma = u"Contaplw.exe";

// Goes through the records of a table. What fails in one tells which.
template <class PorRegistro>
void recorre(TablaDbf& tabla, const QString& nombre, const Avance& avance,
             PorRegistro&& porRegistro) {
  while (tabla.siguiente()) {
    avance(tabla.registro(), tabla.total());
    try {
      porRegistro();
    } catch (const ErrorEjecucion& error) {
      throw error.en(QStringLiteral("%1, registro %2").arg(nombre).arg(tabla.registro() + 1));
    }
  }
}

// An amount with a minus before it, whatever sign it has: one that is negative already is no number
// then.
Variant negado(const Variant& importe) {
  return importe.isNull() ? importe : Variant(u'-' + importe.text());
}

// --- journal ------------------------------------------------------------------------------------

// The columns that a line is told by their names.
struct ColumnasDiario {
  explicit ColumnasDiario(const TablaDbf& diario)
      : debe(diario.columna(QStringLiteral("EuroDebe"))),
        haber(diario.columna(QStringLiteral("EuroHaber"))) {}
  int debe;
  int haber;
};

Apunte apunteDe(const TablaDbf& diario, const ColumnasDiario& columnas) {
  Apunte apunte;
  apunte.NAsiento = diario.valor(0);
  apunte.Fecha = diario.valor(1);
  apunte.Subcuenta = diario.valor(2);
  apunte.Descripcion = diario.valor(5);
  if (!diario.valor(14).isNull()) apunte.Punteo = "X";
  // Kept: it is the debe that tells the side, and only a plain zero of it makes a line of haber.
  const Variant debe = diario.valor(columnas.debe);
  const bool alHaber = debe.display() == QLatin1String("0");
  apunte.DH = alHaber ? "H" : "D";
  apunte.Importe = alHaber ? negado(diario.valor(columnas.haber)) : debe;
  return apunte;
}

// --- register -----------------------------------------------------------------------------------

struct TipoIVA {
  Variant codigo;
  double iva;
  double recargo;
};

std::vector<TipoIVA> tiposDe(Database& empresa) {
  std::vector<TipoIVA> tipos;
  RowReader filas(empresa, QStringLiteral("Select Codigo, IVA, RE from TiposIVA"));
  while (filas.next()) tipos.push_back({filas.value(0), filas.number(1), filas.number(2)});
  return tipos;
}

// The first type with both rates; Null if there is none.
Variant tipoCon(const std::vector<TipoIVA>& tipos, const Variant& iva, const Variant& recargo) {
  if (iva.isNull() || recargo.isNull()) return {};
  for (const TipoIVA& tipo : tipos)
    if (tipo.iva == iva.number() && tipo.recargo == recargo.number()) return tipo.codigo;
  return {};
}

// Kept: sales take the accounts of purchases too; only their base has its sign turned.
FilaRSIVA filaDe(const TablaDbf& diario, LibroIVA libro, const CuentasIVA& cuentas,
                 const std::vector<TipoIVA>& tipos) {
  const auto campo = [&](const char* nombre) { return diario.valor(QLatin1String(nombre)); };
  FilaRSIVA fila;
  fila.CliPro = campo("Contra");
  fila.Factura = campo("Documento");
  const Variant base = campo("BaseEuro");
  fila.Base = libro == LibroIVA::Repercutido ? negado(base) : base;
  fila.TipoIVA = tipoCon(tipos, campo("IVA"), campo("RECEQUIV"));
  fila.Asiento = campo("Asien");
  fila.CtaIVA = cuentas.IVASSub;
  fila.FechaC = campo("Fecha");
  fila.Fecha = fila.FechaC;
  fila.CtaRE = cuentas.IVASRE;
  fila.CtaCon = cuentas.IVASCom;
  return fila;
}

}  // namespace

QString contaplus::carpeta(const QString& programa, const QString& empresa) {
  if (programa.size() < kPrograma.size()) throw ErrorEjecucion(err::kLlamadaNoValida, programa);
  const QString donde = programa.chopped(kPrograma.size()) + QStringLiteral("EMP");
  const QString suya = donde + empresa.left(2);
  // A code of one digit has its folder named with a blank, which no system keeps at the end.
  return QFileInfo::exists(rutaSistema(suya)) ? suya : donde + empresa.left(2).trimmed();
}

QStringList contaplus::empresas(const QString& programa) {
  QStringList lista;
  TablaDbf tabla(carpeta(programa, {}), QStringLiteral("Empresa.dbf"));
  while (tabla.siguiente())
    lista += tabla.valor(0).display() + QStringLiteral(" - ") + tabla.valor(1).display();
  return lista;
}

void contaplus::importaPlan(Database& empresa, const QString& carpeta, int digitosCuenta,
                            const Avance& avance) {
  const QString nombre = QStringLiteral("Subcta.dbf");
  TablaDbf plan(carpeta, nombre);
  const auto subcuentas = empresa.OpenRecordset(QStringLiteral("Select * from Subcuentas"));
  QSet<QString> conocidas;
  RowReader codigos(empresa, QStringLiteral("Select Subcuenta from Subcuentas"));
  while (codigos.next()) conocidas.insert(codigos.text(0).toCaseFolded());

  const std::pair<const char*, int> columnas[] = {
      {"Subcuenta", 0}, {"Descripcion", 1}, {"Direccion", 3}, {"Provincia", 5},
      {"CP", 6},        {"Poblacion", 4},   {"Nif", 2}};
  recorre(plan, nombre, avance, [&] {
    const QString codigo = plan.valor(0).display();
    subcuentas->AddNew();
    for (const auto& [campo, columna] : columnas)
      subcuentas->Fields(QLatin1String(campo)) = plan.valor(columna);
    subcuentas->Fields(QStringLiteral("Cuenta")) = codigo.left(digitosCuenta);
    // One that is there stays as it is: its name and address are the user's.
    if (codigo.isEmpty() || conocidas.contains(codigo.toCaseFolded()))
      return subcuentas->CancelUpdate();
    conocidas.insert(codigo.toCaseFolded());
    if (!saltando([&] { subcuentas->Update(); })) subcuentas->CancelUpdate();
  });
}

void contaplus::importaDiario(Database& empresa, const QString& carpeta, const Avance& avance) {
  const QString nombre = QStringLiteral("Diario.dbf");
  TablaDbf tabla(carpeta, nombre);
  const ColumnasDiario columnas(tabla);
  IndicesAparte aparte(empresa, tabla.total());
  ApuntesEnSerie serie(empresa);
  const Avance entreSeries = [&](int posicion, int total) {
    if (!serie.abierta()) avance(posicion, total);
  };
  recorre(tabla, nombre, entreSeries, [&] { serie.graba(apunteDe(tabla, columnas)); });
  serie.cierra();
  aparte.repone();
}

void contaplus::importaIVA(Database& empresa, const QString& carpeta, const Avance& avance) {
  const QString nombre = QStringLiteral("Diario.dbf");
  TablaDbf diario(carpeta, nombre);
  const int serie = diario.columna(QStringLiteral("Serie"));
  const auto contadores = empresa.OpenRecordset(QStringLiteral("Select * from Empresa"));
  const CuentasIVA cuentas = leeDatosEmpresa(*contadores);
  const auto tipos = tiposDe(empresa);
  const auto registro =
      empresa.OpenRecordset(QStringLiteral("Select * from RSIVA where Codigo=''"));
  recorre(diario, nombre, avance, [&] {
    const QString suya = diario.valor(serie).display();
    if (suya.isEmpty()) return;
    const LibroIVA libro = suya == QLatin1String("V") ? LibroIVA::Repercutido : LibroIVA::Soportado;
    registro->AddNew();
    const int orden = tomaContador(*contadores, contadorDe(libro)) + 1;
    FilaRSIVA fila;
    completa(*registro, [&] {
      fila = filaDe(diario, libro, cuentas, tipos);
      fila.Codigo = codigoRegistro(letraDe(libro), QString::number(orden));
      escribe(*registro, fila);
    });
    ponCodigoEnAsiento(empresa, fila.Asiento, fila.Codigo.text());
  });
}
