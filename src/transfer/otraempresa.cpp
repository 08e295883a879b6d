#include "transfer/otraempresa.h"

#include <QDir>
#include <QFileInfo>

#include "common/ignorar.h"
#include "common/rutas.h"
#include "company/alta.h"
#include "engine/dbengine.h"

namespace {

constexpr int kNombreEmpresa = 1;

// In this order, and before the tables that they read.
constexpr const char* kConsultas[] = {
    "SqlDiarioBuscaDescuadres",
    "SqlDiarioPrincipal",
    "SqlDiarioSaldosCuentasMeses",
    "SqlSumaDiario",
    "SqlSumaDiarioPorAsientos",
    "SqlDiarioPrincipalBlanco",
    "SqlSumasSaldosN1",
    "SqlSumasSaldosN2",
    "SqlSumasSaldosN3",
    "SqlSumasSaldosN4",
    "SqlIva",
    "SqlAcumulados",
    "SqlSubcuentas con saldo",
    "SqlSubcuentasSaldosCuentas",
    "SqlDiarioSaldosCuentasTotal",
    "SqlPerdidasyGanancias",
    "SqlBalance",
    "Sql347",
    "SqlRecibos",
    "SqlRegularizaStock",
};

// The tables; without a choice of their own they never stay.
struct Tabla {
  const char* nombre;
  bool PartesExportadas::*elegida = nullptr;
};
constexpr Tabla kTablas[] = {
    {"ActPas"},
    {"Conceptos"},
    {"Cuentas"},
    {"Empresa"},
    {"Nivel01"},
    {"Nivel02"},
    {"TipoRecibos"},
    {"TiposIVA"},
    {"Subcuentas", &PartesExportadas::plan},
    {"Diario", &PartesExportadas::diario},
    {"RSIVA", &PartesExportadas::iva},
    {"Recibos", &PartesExportadas::recibos},
};

}  // namespace

void clonaEmpresa(DBEngine& motor, const QString& dirDatos, const QString& origen,
                  const QString& nombre, const Advance& avance) {
  creaEmpresa(motor, dirDatos, nombre, [&](const QString& fichero) {
    motor.CopyDatabase(origen, fichero, avance);
    const auto base = motor.Workspaces(0).OpenDatabase(fichero);
    const auto empresa = base->OpenRecordset(QStringLiteral("Select * from Empresa"));
    empresa->Edit();
    empresa->Fields(kNombreEmpresa) = nombre;
    empresa->Update();
    motor.flush();
  });
}

bool esDelPrograma(const QString& dirDatos, const QString& fichero) {
  const QString elegido = QFileInfo(fichero).canonicalFilePath();
  if (elegido.isEmpty()) return false;
  const QDir datos(rutaSistema(dirDatos));
  const auto es = [&](const QString& ruta) {
    return QFileInfo(rutaSistema(ruta)).canonicalFilePath() == elegido;
  };
  if (es(dirDatos + QStringLiteral("Inicio.mdb")) || es(dirDatos + QStringLiteral("Gestion.MDB")))
    return true;
  const QStringList carpetas = datos.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
  return std::ranges::any_of(carpetas, [&](const QString& carpeta) {
    return es(dirDatos + carpeta + QStringLiteral("\\Conta.MDB"));
  });
}

void dejaLoElegido(DBEngine& motor, const QString& fichero, const PartesExportadas& partes,
                   const Advance& avance) {
  ignorando([&] {
    const auto base = motor.Workspaces(0).OpenDatabase(fichero);
    for (const char* consulta : kConsultas)
      ignorando([&] { base->deleteQuery(QString::fromLatin1(consulta)); });
    for (const Tabla& tabla : kTablas)
      if (!tabla.elegida || !(partes.*tabla.elegida))
        ignorando([&] { base->deleteTable(QString::fromLatin1(tabla.nombre)); });
    motor.flush();
  });
  ignorando([&] { motor.CompactDatabase(fichero, fichero, avance); });
}
