#include "oficial/widgets/hojaimpresa.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "reports/exporta.h"
#include "reports/widgets/vistaprevia.h"
#include "toolkit/contexto.h"

namespace {

constexpr int kTextos = 20, kImportes = 8, kLargo = 200;

// The preview may outlive whatever opened it.
class Carpeta : public QObject {
 public:
  using QObject::QObject;
  QTemporaryDir carpeta;
};

QString carpetaNueva() {
  auto* const una = new Carpeta(QCoreApplication::instance());
  if (!una->carpeta.isValid()) throw ErrorEjecucion(err::kErrorDeRuta, una->carpeta.path());
  return rutaPrograma(una->carpeta.path());
}

}  // namespace

QString HojaImpresa::escribe() const {
  const QString ruta = carpetaNueva() + QStringLiteral("\\Hoja.MDB");
  const auto empresa = ctx_.motor.Workspaces(0).OpenDatabase(ctx_.sesion.rutaEmpresa());
  const auto libro = ctx_.motor.Workspaces(0).CreateDatabase(
      ruta, QStringLiteral(";LANGID=0x0409;CP=1252;COUNTRY=0"));
  TableDef deEmpresa = empresa->tableDef(QStringLiteral("Empresa"));
  deEmpresa.Indexes.clear();
  libro->appendTable(deEmpresa);
  TableDef hoja;
  hoja.Name = QStringLiteral("Hoja");
  hoja.CreateField(QStringLiteral("Orden"), FieldType::Long);
  for (int c = 1; c <= kTextos; ++c)
    hoja.CreateField(QStringLiteral("C%1").arg(c), FieldType::Text, kLargo).AllowZeroLength = true;
  for (int c = 1; c <= kImportes; ++c)
    hoja.CreateField(QStringLiteral("N%1").arg(c), FieldType::Double);
  libro->appendTable(hoja);
  const auto origen = empresa->OpenRecordset(QStringLiteral("Empresa"));
  const auto copia = libro->OpenRecordset(QStringLiteral("Empresa"));
  copia->AddNew();
  completa(*copia, [&] { copiaCampos(*origen, *copia); });
  const auto filas = libro->OpenRecordset(QStringLiteral("Hoja"));
  int orden = 0;
  for (const Fila& fila : filas_) {
    filas->AddNew();
    completa(*filas, [&] {
      filas->Fields(0) = ++orden;
      for (int c = 0; c < kTextos; ++c)
        filas->Fields(c + 1) = fila.textos.value(c).trimmed().left(kLargo);
      for (int c = 0; c < fila.importes.size(); ++c)
        filas->Fields(kTextos + 1 + c) = fila.importes[c];
    });
  }
  ctx_.motor.flush();
  return ruta;
}

Informe HojaImpresa::informe(const QString& plantilla, Informe::Destino destino) const {
  Informe informe(ctx_.motor, *ctx_.reloj, std::move(destino));
  informe.ReportFileName =
      ctx_.sesion.DirDatos + QStringLiteral("Impresos\\") + plantilla + QStringLiteral(".rpt");
  informe.DataFiles(0) = escribe();
  return informe;
}

void HojaImpresa::muestra(const QString& titulo, const QString& plantilla,
                          const QString& limites) const {
  try {
    Informe informe = this->informe(plantilla, destinoDePantalla(ctx_, padre_));
    informe.WindowTitle = titulo;
    informe.ParameterFields(0) = QStringLiteral("Limites;") + limites + QStringLiteral(";True");
    informe.PrintReport();
  } catch (const ErrorEjecucion& e) {
    avisaDeFallo(ctx_, padre_, e);
  }
}

void HojaImpresa::guardaXlsx(const QString& ruta, const QString& plantilla) const {
  Informe::Destino fichero;
  fichero.impresoras = [] { return QStringList(QStringLiteral("XLSX")); };
  fichero.muestra = [&ruta](std::shared_ptr<reports::Documento> documento, const QString&) {
    const auto tarea = reports::exportaXlsx(std::move(documento), ruta);
    while (tarea->paso()) continue;
  };
  informe(plantilla, fichero).PrintReport();
}
