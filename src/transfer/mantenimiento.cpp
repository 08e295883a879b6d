#include "transfer/mantenimiento.h"

#include "accounts/plan2007.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/ignorar.h"
#include "company/crearbase.h"
#include "company/indices.h"
#include "engine/dbengine.h"
#include "engine/rowreader.h"
#include "transfer/tramos.h"

namespace {

// What the first character of a table's entry says: its rows are added to those that the new file
// has.
constexpr QChar kSeAnaden = u'1';

// Kept: the count stops before the last one. The kinds of receipt come as a new company has them.
constexpr const char* kTablas[] = {"1Conceptos",  "1Cuentas",  "1Diario",  "1Empresa",    "1RSIVA",
                                   "1Subcuentas", "1TiposIVA", "1Recibos", "1TipoRecibos"};
static_assert(std::size(kTablas) == kTablasReindexadas + 1);

// What the user won't have left out.
struct Abandonado {};

class Copia {
 public:
  Copia(Database& origen, Database& destino, const MarchaReindexado& marcha)
      : origen_(origen), destino_(destino), marcha_(marcha) {}

  // The tables that not every company has, whole: what else would keep what they hold?
  void tablasPropias() {
    const QStringList comunes = destino_.TableDefs();
    for (const QString& nombre : origen_.TableDefs()) {
      if (comunes.contains(nombre, Qt::CaseInsensitive)) continue;
      if (intenta([&] { destino_.appendTable(origen_.tableDef(nombre)); })) tabla(nombre);
    }
  }

  // The rows of a table, in the order in which they stand in it.
  void tabla(const QString& nombre) {
    const int total = origen_.OpenRecordset(nombre)->rowTotal();
    RowReader filas(origen_, nombre);
    const auto nuevas = destino_.OpenRecordset(nombre);
    for (int i = 0; filas.next(); ++i) {
      marcha_.fila(i, total);
      fila(filas, *nuevas);
    }
  }

 private:
  void fila(const RowReader& fila, Recordset& nuevas) {
    if (!intenta([&] { nuevas.AddNew(); })) return;
    for (int i = 0; i < fila.columnCount(); ++i) intenta([&] { nuevas.Fields(i) = fila.value(i); });
    if (!intenta([&] { nuevas.Update(); })) nuevas.CancelUpdate();
  }

  // A disk that is full takes with it rows that were copied before: there is no going on.
  template <class Paso>
  bool intenta(Paso&& paso) {
    try {
      paso();
      return true;
    } catch (const ErrorEjecucion& e) {
      if (esDelFichero(e.numero())) throw;
      if (!marcha_.omite(e)) throw Abandonado();
      return false;
    }
  }

  Database& origen_;
  Database& destino_;
  const MarchaReindexado& marcha_;
};

// With what may still wait to be written to it: nothing else is being written meanwhile.
void borraObra(DBEngine& motor, const QString& nuevo) {
  ignorando([&] { motor.discard(); });
  ignorando([&] { motor.DeleteDatabase(nuevo); });
}

void copiaTablas(DBEngine& motor, const Reindexado& obra, const MarchaReindexado& marcha) {
  const auto origen = motor.Workspaces(0).OpenDatabase(obra.ruta);
  const auto destino = motor.Workspaces(0).OpenDatabase(obra.nuevo);
  quitaIndices(*destino);
  Copia copia(*origen, *destino, marcha);
  for (int i = 0; i < kTablasReindexadas; ++i) {
    const QString entrada = QString::fromLatin1(kTablas[i]);
    Q_ASSERT(entrada.startsWith(kSeAnaden));
    marcha.tabla(i);
    copia.tabla(entrada.mid(1));
  }
  copia.tablasPropias();
  // The levels come as a new company has them, which is by the plan that the company follows.
  if (const auto plan = plan2007De(*origen); plan.sigue) ponNivelesDe2007(*destino, plan.modelo);
  aligeraBase(*destino);
  motor.flush();
}

}  // namespace

QString rutaDeTrabajo(const QString& dirDatos, const QString& empresa) {
  return dirDatos + empresa + QStringLiteral("\\Conta2.MDB");
}

std::optional<qint64> reindexa(DBEngine& motor, const Reindexado& obra,
                               const MarchaReindexado& marcha) {
  const qint64 leida = motor.commits(obra.ruta);
  if (motor.exists(obra.nuevo)) throw ErrorEjecucion(err::kBaseYaExiste, obra.nuevo);
  try {
    creaBaseVacia(motor, obra.nuevo, obra.digitosCuenta, obra.digitosSubcuenta);
    copiaTablas(motor, obra, marcha);
    return leida;
  } catch (const Abandonado&) {
    borraObra(motor, obra.nuevo);
    return std::nullopt;
  } catch (...) {
    borraObra(motor, obra.nuevo);
    throw;
  }
}

void reparaEmpresa(DBEngine& motor, const QString& ruta, const QString& nuevo,
                   const Advance& avance) {
  // What a repair that was broken off has left is of no use to anybody.
  if (motor.exists(nuevo)) motor.DeleteDatabase(nuevo);
  motor.RepairDatabase(ruta, tramo(avance, 0, 3));
  const qint64 reparada = motor.commits(ruta);
  try {
    motor.CompactDatabase(ruta, nuevo, tramo(avance, 1, 3));
    motor.ReplaceDatabase(nuevo, ruta, reparada, tramo(avance, 2, 3));
  } catch (...) {
    ignorando([&] { motor.DeleteDatabase(nuevo); });
    throw;
  }
  motor.DeleteDatabase(nuevo);
}

void compruebaImportes(Database& empresa, const QString& mascara, const Advance& avance) {
  const auto diario = empresa.OpenRecordset(QStringLiteral("Select Importe from Diario"));
  diario->MoveLast();
  const int total = diario->RecordCount();
  for (diario->MoveFirst(); !diario->Eof(); diario->MoveNext()) {
    avance(diario->AbsolutePosition(), total);
    const Variant importe = diario->Fields(0).Value();
    if (importe.isNull()) continue;
    const QString mostrado = Format(importe, mascara);
    const auto redondeado = ImporteDe(mostrado, mascara);
    if (redondeado == importe.number()) continue;
    diario->Edit();
    diario->Fields(0) = redondeado ? Variant(*redondeado) : Variant(mostrado);
    diario->Update();
  }
}
