#include "reports/informe.h"

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "engine/rowreader.h"
#include "reports/errores.h"

using namespace reports;

namespace {
void exigeCero(int numero) {
  if (numero != 0) throw ErrorEjecucion(err::kLlamadaNoValida);
}

// "Limites;Desde : 01/01/2004   ~   Hasta : 31/12/2004;True" as its name and its text, which may
// hold semicolons.
std::pair<QString, QString> parametroDe(const QString& texto) {
  const qsizetype primero = texto.indexOf(u';'), ultimo = texto.lastIndexOf(u';');
  if (primero < 0 || ultimo == primero) throw ErrorEjecucion(err::kLlamadaNoValida, texto);
  return {texto.left(primero), texto.mid(primero + 1, ultimo - primero - 1)};
}

void leeEmpresa(Database& base, DatosInforme& datos) {
  RowReader fila(base, QStringLiteral("Empresa"));
  if (!fila.next()) throw ErrorEjecucion(err::kSinRegistroActivo, QStringLiteral("Empresa"));
  const std::pair<const char*, const char*> campos[] = {
      {"empresa", "NombreEmpresa"}, {"año", "Año"},       {"nif", "Nif"},
      {"direccion", "Direccion"},   {"cp", "CP"},         {"poblacion", "Poblacion"},
      {"provincia", "Provincia"},   {"moneda", "Simbolo"}};
  for (const auto& [dato, campo] : campos) {
    const int ordinal = fila.ordinal(QString::fromUtf8(campo));
    if (ordinal < 0) throw ErrorEjecucion(err::kElementoNoEncontrado, QString::fromUtf8(campo));
    datos.textos.insert(QString::fromUtf8(dato), fila.value(ordinal).display());
  }
  datos.mascara = fila.text(fila.ordinal(QStringLiteral("Mascara")));
}
}  // namespace

Informe::Informe(DBEngine& motor, const Reloj& reloj, Destino destino)
    : motor_(motor), reloj_(reloj), destino_(std::move(destino)) {}

QString& Informe::DataFiles(int numero) {
  exigeCero(numero);
  return fichero_;
}

QString& Informe::ParameterFields(int numero) {
  exigeCero(numero);
  return parametro_;
}

void Informe::PrintReport() {
  if (destino_.impresoras().isEmpty()) throw ErrorEjecucion(err::kSinImpresora);
  Plantilla plantilla = abrePlantilla(ReportFileName);
  DatosInforme datos;
  if (!parametro_.isEmpty()) {
    const auto [nombre, valor] = parametroDe(parametro_);
    if (!plantilla.parametros.contains(nombre, Qt::CaseInsensitive)) {
      throw ErrorEjecucion(err::kPlantillaDefectuosa,
                           QStringLiteral("no tiene el parámetro ") + nombre);
    }
    datos.textos.insert(nombre.toLower(), valor);
  }
  const Consulta consulta = consultaDe(plantilla, SelectionFormula, GroupSelectionFormula);
  datos.textos.insert(QStringLiteral("libro"), plantilla.titulo);
  datos.textos.insert(QStringLiteral("nota"), consulta.origen.nota);
  datos.textos.insert(QStringLiteral("codigos"), consulta.codigos);
  datos.textos.insert(QStringLiteral("hoy"), Format(reloj_.hoy(), QStringLiteral("dd/mm/yyyy")));
  const auto abre = [&motor = motor_, fichero = fichero_, datos, consulta] {
    auto base = motor.Workspaces(0).OpenDatabase(fichero);
    Contenido contenido{base->state(), datos, nullptr};
    leeEmpresa(*base, contenido.datos);
    contenido.fuente = std::make_unique<Fuente>(std::move(base), consulta);
    return contenido;
  };
  destino_.muestra(std::make_shared<Documento>(std::move(plantilla), abre), WindowTitle);
}
