#include "oficial/tablafija.h"

#include <QHash>

#include "common/tablacsv.h"

// Outside any namespace: the macro declares the function that the resource compiler writes.
static void abreTablas() {
  Q_INIT_RESOURCE(oficial);
}

namespace {

// The names of a table's rows and their other names, as they are looked for.
template <class T>
QHash<QString, T> porNombres(const QString& tabla, int columna, T (*valor)(const QStringList&)) {
  QHash<QString, T> mapa;
  for (const QStringList& fila : leeTablaFija(tabla)) {
    mapa.insert(llanoOficial(fila[0]), valor(fila));
    mapa.insert(llanoOficial(fila[columna]), valor(fila));
    for (const QString& otro : fila[columna + 1].split(u'|', Qt::SkipEmptyParts))
      mapa.insert(llanoOficial(otro), valor(fila));
  }
  return mapa;
}

Pais paisDeFila(const QStringList& fila) {
  return {fila[0], fila[1]};
}

}  // namespace

QList<QStringList> leeTablaFija(const QString& nombre) {
  abreTablas();
  return leeTablaCsv(QStringLiteral(":/oficial/") + nombre);
}

QString llanoOficial(const QString& texto) {
  QString llano;
  for (const QChar c : texto.simplified().toCaseFolded().normalized(QString::NormalizationForm_D))
    if (c.category() != QChar::Mark_NonSpacing) llano += c;
  return llano;
}

QString codigoDeProvincia(const QString& codigoPostal, const QString& nombre) {
  const QString cifras = codigoPostal.trimmed().left(2);
  bool esNumero = false;
  const int numero = cifras.toInt(&esNumero);
  if (esNumero && cifras.size() == 2 && numero >= 1 && numero <= 52) return cifras;
  static const auto provincias = porNombres<QString>(
      QStringLiteral("provincias.csv"), 1, [](const QStringList& fila) { return fila[0]; });
  return provincias.value(llanoOficial(nombre));
}

Pais paisDe(const QString& nombre) {
  static const auto paises = porNombres<Pais>(QStringLiteral("paises.csv"), 2, paisDeFila);
  if (nombre.trimmed().isEmpty()) return {QStringLiteral("ES"), QStringLiteral("ES")};
  return paises.value(llanoOficial(nombre));
}

Pais paisDePrefijo(const QString& prefijo) {
  static const QList<QStringList> filas = leeTablaFija(QStringLiteral("paises.csv"));
  for (const QStringList& fila : filas)
    if (!fila[1].isEmpty() && fila[1] == prefijo) return paisDeFila(fila);
  return {};
}
