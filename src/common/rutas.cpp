#include "common/rutas.h"

#include <QDir>
#include <QFileInfo>

namespace {

// The spelling that `parte` has in `carpeta`, or its own when nothing there has that name.
QString nombreEnDisco(const QString& carpeta, const QString& parte) {
  if (parte.isEmpty() || QFileInfo::exists(carpeta + parte)) return parte;
  const QStringList nombres =
      QDir(carpeta.isEmpty() ? QStringLiteral(".") : carpeta)
          .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDir::Name);
  for (const QString& nombre : nombres) {
    if (nombre.compare(parte, Qt::CaseInsensitive) == 0) return nombre;
  }
  return parte;
}

}  // namespace

QString rutaSistema(const QString& ruta) {
  QString escrita = ruta;
  escrita.replace(QLatin1Char('\\'), QLatin1Char('/'));
  if (escrita.isEmpty() || QFileInfo::exists(escrita)) return escrita;

  QString hallada;
  hallada.reserve(escrita.size());
  qsizetype desde = 0;
  while (desde <= escrita.size()) {
    qsizetype hasta = escrita.indexOf(QLatin1Char('/'), desde);
    if (hasta < 0) hasta = escrita.size();
    hallada += nombreEnDisco(hallada, escrita.mid(desde, hasta - desde));
    if (hasta < escrita.size()) hallada += QLatin1Char('/');
    desde = hasta + 1;
  }
  return hallada;
}

QString rutaPrograma(const QString& rutaDelSistema) {
  QString ruta = rutaDelSistema;
  return ruta.replace(QLatin1Char('/'), QLatin1Char('\\'));
}
