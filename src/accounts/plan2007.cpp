#include "accounts/plan2007.h"

#include <algorithm>
#include <QHash>
#include <QSet>

#include "common/tablacsv.h"
#include "company/tablas.h"
#include "engine/dbengine.h"
#include "engine/filas.h"

// Outside any namespace: the macro declares the function that the resource compiler writes.
static void abreRecurso() {
  Q_INIT_RESOURCE(plan2007);
}

namespace {

constexpr int kLargoDeCuenta = 75, kLargoDeSubgrupo = 80, kLargoDeGrupo = 50;
const QString kPlanOficial = QStringLiteral("PlanOficial");
const QString kPymes = QStringLiteral("2007 PYMES"), kNormal = QStringLiteral("2007");

QList<QStringList> tabla(const char* nombre) {
  abreRecurso();
  return leeTablaCsv(QStringLiteral(":/plan2007/%1.csv").arg(QLatin1String(nombre)));
}

// The wording of the model for small companies, where it is another.
const QHash<QString, QString>& nombresDePymes() {
  static const QHash<QString, QString> nombres = [] {
    QHash<QString, QString> mapa;
    for (const QStringList& fila : tabla("pymes")) mapa.insert(fila[0], fila[1]);
    return mapa;
  }();
  return nombres;
}

CuentaDe2007 cuentaDe(const QStringList& fila, Modelo2007 modelo, int largo) {
  QString nombre = fila[1];
  if (modelo == Modelo2007::Pymes) nombre = nombresDePymes().value(fila[0], nombre);
  return {fila[0], abreviaNombre(nombre, largo)};
}

bool esDelModelo(const QStringList& fila, Modelo2007 modelo) {
  return fila[modelo == Modelo2007::Pymes ? 2 : 3] == QLatin1String("S");
}

// Small companies have neither groups 8 and 9 nor the subgroup of what is held for sale.
bool soloDelNormal(const QString& nivel) {
  return nivel[0] >= u'8' || nivel == QLatin1String("58");
}

QList<CuentaDe2007> niveles(const char* nombre, Modelo2007 modelo, int largo) {
  QList<CuentaDe2007> lista;
  for (const QStringList& fila : tabla(nombre))
    if (modelo == Modelo2007::Normal || !soloDelNormal(fila[0]))
      lista.append(cuentaDe(fila, modelo, largo));
  return lista;
}

// The side of the balance on which a group stands; the results stand on none.
QString ladoDe(const QString& grupo) {
  if (grupo >= QLatin1String("6")) return QStringLiteral("3");
  return grupo == QLatin1String("2") || grupo == QLatin1String("3") ? QStringLiteral("1")
                                                                    : QStringLiteral("2");
}

// The row of a level with that code, new if there is none, with its name put right.
void ponNivel(Database& empresa, const QString& tabla, const CuentaDe2007& nivel) {
  const auto fila = empresa.OpenRecordset(
      QStringLiteral("Select * from %1 where NNivel='%2'").arg(tabla, nivel.codigo));
  const bool nueva = fila->Eof();
  if (nueva)
    fila->AddNew();
  else
    fila->Edit();
  completa(*fila, [&] {
    fila->Fields("NNivel") = nivel.codigo;
    fila->Fields("Descripcion") = nivel.nombre;
    if (!nueva) return;
    if (tabla == QLatin1String("Nivel02"))
      fila->Fields("NNivel01") = nivel.codigo.left(1);
    else
      fila->Fields("ActPas") = ladoDe(nivel.codigo);
  });
}

// Which national plan the company's accounts follow. One row.
constexpr CampoDeTabla kCampos[] = {
    {"Plan", FieldType::Text, 10},  // "2007" or "2007 PYMES"
    {"Desde", FieldType::Date},     // when it was sown or the company converted
};
constexpr TablaDeEmpresa kTabla = {"PlanOficial", kCampos, 0};

}  // namespace

QString abreviaNombre(const QString& nombre, int largo) {
  static const QList<QStringList> abreviaturas = tabla("abreviaturas");
  QString corto = nombre;
  for (const QStringList& fila : abreviaturas) {
    if (corto.size() <= largo) break;
    corto.replace(fila[0], fila[1]);
  }
  return corto;
}

QList<CuentaDe2007> cuentasDe2007(Modelo2007 modelo, int digitosCuenta) {
  QList<CuentaDe2007> lista;
  QSet<QString> divididas;
  if (digitosCuenta > 3)
    for (const QStringList& fila : tabla("cuentas4"))
      if (esDelModelo(fila, modelo)) {
        divididas.insert(fila[0].left(3));
        lista.append(cuentaDe(fila, modelo, kLargoDeCuenta));
      }
  for (const QStringList& fila : tabla("cuentas"))
    if (esDelModelo(fila, modelo) && !divididas.contains(fila[0]))
      lista.append(cuentaDe(fila, modelo, kLargoDeCuenta));
  for (CuentaDe2007& cuenta : lista)
    cuenta.codigo = cuenta.codigo.leftJustified(digitosCuenta, u'0');
  std::ranges::sort(lista, {}, &CuentaDe2007::codigo);
  return lista;
}

QList<CuentaDe2007> subgruposDe2007(Modelo2007 modelo) {
  return niveles("subgrupos", modelo, kLargoDeSubgrupo);
}

QList<CuentaDe2007> gruposDe2007(Modelo2007 modelo) {
  return niveles("grupos", modelo, kLargoDeGrupo);
}

void ponNivelesDe2007(Database& empresa, Modelo2007 modelo) {
  for (const CuentaDe2007& grupo : gruposDe2007(modelo))
    ponNivel(empresa, QStringLiteral("Nivel01"), grupo);
  QSet<QString> usados;
  for (const CuentaDe2007& subgrupo : subgruposDe2007(modelo)) {
    ponNivel(empresa, QStringLiteral("Nivel02"), subgrupo);
    usados.insert(subgrupo.codigo);
  }
  const auto cuentas = empresa.OpenRecordset(QStringLiteral("Select SubGrupoN from Cuentas"));
  for (; !cuentas->Eof(); cuentas->MoveNext()) usados.insert(cuentas->Fields(0).display());
  const auto filas = empresa.OpenRecordset(QStringLiteral("Nivel02"));
  for (; !filas->Eof(); filas->MoveNext())
    if (!usados.contains(filas->Fields("NNivel").display())) filas->Delete();
}

int siembraPlan2007(Database& empresa, Modelo2007 modelo, int digitosCuenta) {
  QSet<QString> hay;
  const auto cuentas = empresa.OpenRecordset(QStringLiteral("Cuentas"));
  for (; !cuentas->Eof(); cuentas->MoveNext()) hay.insert(cuentas->Fields("Cuenta").display());
  int nuevas = 0;
  for (const CuentaDe2007& cuenta : cuentasDe2007(modelo, digitosCuenta)) {
    if (hay.contains(cuenta.codigo)) continue;
    cuentas->AddNew();
    completa(*cuentas, [&] {
      cuentas->Fields("Cuenta") = cuenta.codigo;
      cuentas->Fields("Descripcion") = cuenta.nombre;
      cuentas->Fields("GrupoN") = cuenta.codigo.left(1);
      cuentas->Fields("SubGrupoN") = cuenta.codigo.left(2);
    });
    ++nuevas;
  }
  ponNivelesDe2007(empresa, modelo);
  return nuevas;
}

QList<CambioDePlan> cambiosAl2007(Database& empresa, Modelo2007 modelo, int digitosCuenta) {
  QHash<QString, QString> hay;
  const auto cuentas = empresa.OpenRecordset(QStringLiteral("Cuentas"));
  for (; !cuentas->Eof(); cuentas->MoveNext())
    hay.insert(cuentas->Fields("Cuenta").display(), cuentas->Fields("Descripcion").display());
  QList<CambioDePlan> cambios;
  for (const CuentaDe2007& cuenta : cuentasDe2007(modelo, digitosCuenta)) {
    const auto suya = hay.constFind(cuenta.codigo);
    const QString actual = suya == hay.cend() ? QString()
                           : suya->isNull()   ? QStringLiteral("")
                                              : *suya;
    cambios.append({cuenta.codigo, actual, cuenta.nombre});
  }
  return cambios;
}

void estrenaPlan2007(Database& empresa, Modelo2007 modelo, int digitosCuenta, const QDate& desde,
                     bool nombres) {
  siembraPlan2007(empresa, modelo, digitosCuenta);
  QHash<QString, QString> otros;
  for (const CambioDePlan& cambio : cambiosAl2007(empresa, modelo, digitosCuenta))
    if (cambio.cambiaNombre()) otros.insert(cambio.codigo, cambio.nuevo);
  if (!otros.isEmpty() && !nombres) return;
  const auto cuentas = empresa.OpenRecordset(QStringLiteral("Cuentas"));
  for (; !otros.isEmpty() && !cuentas->Eof(); cuentas->MoveNext()) {
    const auto otro = otros.constFind(cuentas->Fields("Cuenta").display());
    if (otro == otros.cend()) continue;
    cuentas->Edit();
    completa(*cuentas, [&] { cuentas->Fields("Descripcion") = *otro; });
  }
  anotaPlan2007(empresa, modelo, desde);
}

Plan2007DeEmpresa plan2007De(Database& empresa) {
  if (!empresa.TableDefs().contains(kPlanOficial, Qt::CaseInsensitive)) return {};
  const auto fila = empresa.OpenRecordset(kPlanOficial);
  if (fila->Eof()) return {};
  return {true, fila->Fields("Plan").display() == kPymes ? Modelo2007::Pymes : Modelo2007::Normal,
          fila->Fields("Desde").Value().date()};
}

void anotaPlan2007(Database& empresa, Modelo2007 modelo, const QDate& desde) {
  aseguraTabla(empresa, kTabla);
  const auto fila = empresa.OpenRecordset(kPlanOficial);
  if (fila->Eof())
    fila->AddNew();
  else
    fila->Edit();
  completa(*fila, [&] {
    fila->Fields("Plan") = modelo == Modelo2007::Pymes ? kPymes : kNormal;
    fila->Fields("Desde") = desde;
  });
}
