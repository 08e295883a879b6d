#include "company/crearbase.h"

#include "common/ignorar.h"
#include "company/consultas.h"
#include "company/indices.h"
#include "company/semillas.h"
#include "company/tablas.h"
#include "engine/dbengine.h"
#include "start/creaini.h"

namespace {

constexpr int kEmpresaNueva = 1;

// What a file being built needs to know.
struct Obra {
  Database* base;
  int digitosCuenta;
  int digitosSubcuenta;
  bool nuevo;
  const DatosEmpresa& datos;
};

void creaTabla(const Obra& obra, const TablaDeEmpresa& cual) {
  TableDef tabla = definicionDeTabla(cual, obra.digitosCuenta, obra.digitosSubcuenta);
  const std::vector<Index> indices = std::exchange(tabla.Indexes, {});
  obra.base->appendTable(tabla);
  for (const Index& indice : indices) obra.base->appendIndex(tabla.Name, indice);
}

void escribeFilaDeEmpresa(const Obra& obra) {
  DatosEmpresa datos = obra.datos;
  datos.MayorN01 = QString::number(obra.digitosCuenta);
  datos.SubCuN01 = QString::number(obra.digitosSubcuenta);
  const auto empresa = obra.base->OpenRecordset(QStringLiteral("Empresa"));
  ignorando([&] {
    empresa->AddNew();
    empresa->Fields(0) = 1;
    escribeDatosEmpresa(*empresa, datos);
    empresa->Update();
  });
}

// The rows that follow a table, if any.
void siembra(const Obra& obra, const QString& tabla) {
  if (tabla == QLatin1String("Nivel01")) siembraNivel01(*obra.base);
  if (tabla == QLatin1String("Nivel02")) siembraNivel02(*obra.base);
  if (tabla == QLatin1String("ActPas")) siembraActPas(*obra.base);
  if (!obra.nuevo) return;
  if (tabla == QLatin1String("Empresa")) escribeFilaDeEmpresa(obra);
  if (tabla == QLatin1String("Conceptos")) siembraConceptos(*obra.base);
  if (tabla == QLatin1String("TiposIVA")) {
    siembraTiposIVA(*obra.base);
    siembraSubcuentasEspeciales(*obra.base, obra.digitosCuenta, obra.digitosSubcuenta, obra.datos);
  }
}

// All but what makes it quick.
std::unique_ptr<Database> construye(DBEngine& motor, const QString& ruta, Obra obra) {
  auto base = motor.Workspaces(0).CreateDatabase(ruta, QLatin1String(kOrdenGeneral));
  obra.base = base.get();
  for (const TablaDeEmpresa& tabla : tablasDeEmpresa()) {
    creaTabla(obra, tabla);
    siembra(obra, QLatin1String(tabla.nombre));
  }
  // Kept: a new company holds the kinds of receipt twice. The grid of the receipts shows both runs.
  if (obra.nuevo) siembraTipoRecibos(*base);
  siembraTipoRecibos(*base);
  for (const Consulta& consulta : consultasDeEmpresa())
    base->CreateQueryDef(QString::fromUtf8(consulta.nombre), QString::fromUtf8(consulta.texto));
  return base;
}

}  // namespace

void aligeraBase(Database& base) {
  ponIndices(base);
  const QList<QList<SumKey>> claves = {
      {},
      {{QStringLiteral("NAsiento")}},
      {{QStringLiteral("Subcuenta")}, {QStringLiteral("Fecha"), SumKey::Part::Month}}};
  for (const QList<SumKey>& clave : claves)
    base.keepSums(QStringLiteral("Diario"), QStringLiteral("DH"), QStringLiteral("Importe"), clave);
}

void CrearBase(DBEngine& motor, const QString& ruta, int digitosCuenta, int digitosSubcuenta,
               int nuevo, const DatosEmpresa& datos) {
  const auto base = construye(
      motor, ruta, {nullptr, digitosCuenta, digitosSubcuenta, nuevo == kEmpresaNueva, datos});
  aligeraBase(*base);
  motor.flush();
}

void creaBaseVacia(DBEngine& motor, const QString& ruta, int digitosCuenta, int digitosSubcuenta) {
  construye(motor, ruta, {nullptr, digitosCuenta, digitosSubcuenta, false, {}});
  motor.flush();
}
