#include "transfer/otraempresa.h"

#include <algorithm>
#include <QDir>
#include <QFileInfo>

#include "common/ignorar.h"
#include "common/rutas.h"
#include "company/alta.h"
#include "engine/dbengine.h"

namespace {

constexpr int kNombreEmpresa = 1;

// The tables that are asked for one by one. No other ever stays, whichever part of the program made
// it: what the bank wrote and who declares are nobody's who was sent the plan.
constexpr struct {
  const char* nombre;
  bool PartesExportadas::*elegida;
} kElegibles[] = {
    {"Subcuentas", &PartesExportadas::plan},
    {"Diario", &PartesExportadas::diario},
    {"RSIVA", &PartesExportadas::iva},
    {"Recibos", &PartesExportadas::recibos},
};

bool seQueda(const QString& tabla, const PartesExportadas& partes) {
  return std::ranges::any_of(kElegibles, [&](const auto& elegible) {
    return partes.*elegible.elegida &&
           tabla.compare(QLatin1String(elegible.nombre), Qt::CaseInsensitive) == 0;
  });
}

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
    // Before the tables that they read.
    for (const QString& consulta : base->QueryDefs())
      ignorando([&] { base->deleteQuery(consulta); });
    for (const QString& tabla : base->TableDefs())
      if (!seQueda(tabla, partes)) ignorando([&] { base->deleteTable(tabla); });
    motor.flush();
  });
  ignorando([&] { motor.CompactDatabase(fichero, fichero, avance); });
}
