#include "oficial/declarante.h"

#include <QStringList>

#include "common/comillas.h"
#include "engine/dbengine.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "oficial/identificadores.h"
#include "oficial/tablasoficiales.h"

namespace {

const QString kTabla = QStringLiteral("Declarante");

constexpr DatoDeclarante kDatos[] = {
    {"Nif", "NIF", 9},
    {"Nombre", "Apellidos y nombre o razón social", 80},
    {"Contacto", "Persona de contacto", 40},
    {"Telefono", "Teléfono de contacto", 9},
    {"Iban", "IBAN", 34},
    {"Bic", "SWIFT-BIC", 11},
    {"Actividad", "Actividad: código (A, B, C, D)", 1},
    {"TipoActividad", "Actividad: tipo (01 a 06)", 2},
    {"Epigrafe", "Epígrafe del IAE", 4},
    {"ClaveActividad", "Código de actividad (volumen)", 3},
};

}  // namespace

std::span<const DatoDeclarante> datosDeclarante() {
  return kDatos;
}

Declarante::Declarante(Database& empresa) {
  for (RowReader r(empresa, QStringLiteral("Select NombreEmpresa, Telefono from Empresa"));
       r.next();) {
    pon(QStringLiteral("Nombre"), r.text(0));
    QString cifras;
    for (const QChar c : r.text(1))
      if (c.isDigit()) cifras += c;
    pon(QStringLiteral("Telefono"), cifras.right(9));
  }
  pon(QStringLiteral("Actividad"), QStringLiteral("A"));
  pon(QStringLiteral("TipoActividad"), QStringLiteral("03"));
  const auto filas = leeTablaOficial(empresa, kTabla, QStringLiteral("Select * from ") + kTabla);
  for (; filas && !filas->Eof(); filas->MoveNext())
    pon(filas->Fields(QStringLiteral("Dato")).display(),
        filas->Fields(QStringLiteral("Valor")).display());
}

void Declarante::graba(Database& empresa) const {
  aseguraTablaOficial(empresa, kTabla);
  for (const DatoDeclarante& dato : kDatos) {
    const QString nombre = QLatin1String(dato.dato);
    const auto filas = empresa.OpenRecordset(
        QStringLiteral("Select * from %1 where Dato=%2").arg(kTabla, entreComillas(nombre)));
    if (filas->Eof()) {
      filas->AddNew();
    } else {
      filas->Edit();
    }
    completa(*filas, [&] {
      filas->Fields(QStringLiteral("Dato")) = nombre;
      filas->Fields(QStringLiteral("Valor")) = datos_.value(nombre);
    });
  }
}

QStringList Declarante::faltas() const {
  QStringList faltas;
  switch (compruebaNif(datos_.value(QStringLiteral("Nif")))) {
    case Comprobacion::Vacio:
      faltas += QStringLiteral("Falta el NIF del declarante");
      break;
    case Comprobacion::Malo:
      faltas += QStringLiteral("El NIF del declarante no es correcto");
      break;
    default:
      break;
  }
  if (datos_.value(QStringLiteral("Nombre")).trimmed().isEmpty())
    faltas += QStringLiteral("Falta el nombre del declarante");
  const QString iban = datos_.value(QStringLiteral("Iban"));
  if (compruebaIBAN(iban) == Comprobacion::Malo || compruebaIBAN(iban) == Comprobacion::Dudoso)
    faltas += QStringLiteral("El IBAN no es correcto");
  return faltas;
}
