#include "common/tablacsv.h"

#include <QFile>

#include "common/errorejecucion.h"

QList<QStringList> leeTablaCsv(const QString& fichero) {
  QFile texto(fichero);
  if (!texto.open(QIODevice::ReadOnly)) throw ErrorEjecucion(err::kFicheroNoEncontrado, fichero);
  QList<QStringList> filas;
  const QStringList lineas = QString::fromUtf8(texto.readAll()).split(u'\n', Qt::SkipEmptyParts);
  for (const QString& linea : lineas.sliced(1)) filas.append(linea.split(u';'));
  return filas;
}
