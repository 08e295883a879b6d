#include "company/indices.h"

#include "common/ignorar.h"
#include "engine/dbengine.h"

namespace {

const QString kDiario = QStringLiteral("Diario");

// The journal is read by asiento, by date and by subcuenta at every key, searched by marks and
// amounts, and grows without end. Few of its lines bear a mark.
QList<KeptIndex> indicesDelDiario() {
  const QString asiento = QStringLiteral("NAsiento"), fecha = QStringLiteral("Fecha");
  return {{{asiento}},
          {{QStringLiteral("Subcuenta"), fecha, asiento, QStringLiteral("NLinea")}},
          {{fecha, asiento}},
          {{QStringLiteral("Punteo"), asiento}, true},
          {{QStringLiteral("Importe")}}};
}

bool compensa(Database& empresa, int lineas, bool nuevas) {
  if (lineas < IndicesAparte::desde) return false;
  const auto diario = empresa.OpenRecordset(QStringLiteral("Select Count(*) from Diario"));
  const qint64 hay = diario->Fields(0).toLong();
  return 2 * qint64{lineas} >= hay + (nuevas ? lineas : 0);
}

}  // namespace

void ponIndices(Database& empresa) {
  empresa.keepIndexes(kDiario, indicesDelDiario());
  empresa.keepIndexes(QStringLiteral("Subcuentas"), {{{QStringLiteral("Descripcion")}}});
  // An invoice is found by its asiento.
  empresa.keepIndexes(QStringLiteral("RSIVA"), {{{QStringLiteral("Asiento")}}});
}

void quitaIndices(Database& empresa) {
  empresa.keepIndexes(kDiario, {});
}

void cuidaIndices(DBEngine& motor, const QString& ruta) {
  const DBEngine::Brief sinEspera(motor, 0);
  ignorando([&] { ponIndices(*motor.Workspaces(0).OpenDatabase(ruta)); });
}

int IndicesAparte::desde = 10'000;  // the indexes of fewer are kept up in no time

IndicesAparte::IndicesAparte(Database& empresa, int lineas) : empresa_(empresa) {
  if (!compensa(empresa, lineas, true)) return;
  quitaIndices(empresa_);
  aparte_ = true;
}

IndicesAparte::IndicesAparte(Database& empresa, int lineas, const QStringList& columnas)
    : empresa_(empresa) {
  if (!compensa(empresa, lineas, false)) return;
  QList<KeptIndex> siguen = indicesDelDiario();
  siguen.removeIf([&](const KeptIndex& indice) {
    return std::any_of(columnas.begin(), columnas.end(),
                       [&](const QString& columna) { return indice.columns.contains(columna); });
  });
  empresa_.keepIndexes(kDiario, siguen);
  aparte_ = true;
}

IndicesAparte::~IndicesAparte() {
  if (aparte_) ignorando([this] { repone(); });
}

void IndicesAparte::repone() {
  if (aparte_) empresa_.keepIndexes(kDiario, indicesDelDiario());
  aparte_ = false;
}
