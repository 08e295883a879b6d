#include "soporte/ficheros.h"

#include <QtCore>

QString rutaFuente(const QString& ruta) {
  return QStringLiteral(LIBRANO_FUENTES "/") + ruta;
}

QString rutaDato(const QString& ruta) {
  return rutaFuente("tests/datos/" + ruta);
}

QStringList lineasDeDatos(const QString& fichero) {
  QStringList lineas;
  const QString todo = QString::fromUtf8(contenidoDe(rutaDato(fichero)));
  if (todo.isEmpty()) qFatal("%s", qPrintable(fichero));
  for (const QString& linea : todo.split(u'\n'))
    if (!linea.startsWith(u'#') && !linea.trimmed().isEmpty()) lineas << linea.trimmed();
  return lineas;
}

QList<QStringList> casosDeDatos(const QString& fichero, const QString& clase) {
  static const QRegularExpression kDato("«([^»]*)»");
  QList<QStringList> casos;
  for (const QString& linea : lineasDeDatos(fichero)) {
    if (!linea.startsWith(clase + ' ')) continue;
    QStringList& caso = casos.emplaceBack();
    for (auto it = kDato.globalMatch(linea); it.hasNext();) caso << it.next().captured(1);
  }
  if (casos.isEmpty()) qFatal("%s: %s", qPrintable(fichero), qPrintable(clase));
  return casos;
}

QByteArray contenidoDe(const QString& ruta) {
  QFile fichero(ruta);
  return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

QString haceFichero(const QString& ruta, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(ruta).path());
  QFile fichero(ruta);
  if (!fichero.open(QIODevice::WriteOnly)) qFatal("%s", qPrintable(ruta));
  fichero.write(bytes);
  return ruta;
}
