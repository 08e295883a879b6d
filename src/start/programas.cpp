#include "start/programas.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "common/errorejecucion.h"
#include "common/rutas.h"

namespace {

// What comes with the program and belongs beside its data.
constexpr const char* kAcompanantes[] = {"Impresos", "Inicio.xls", "Librano.chm"};

struct Candidata {
  const char* nombre;
  const char* oculta;
};
constexpr Candidata kHojas[] = {{"localc", "--invisible"}, {"soffice", "--invisible"}};

void copia(const QString& origen, const QString& destino) {
  const QFileInfo info(origen);
  if (!info.isDir()) {
    if (!QFile::copy(origen, destino)) return;  // replaces nothing
    // What an administrator installed for all to read is the user's own from here on.
    QFile::setPermissions(destino, QFile::permissions(destino) | QFile::WriteUser);
    return;
  }
  QDir().mkpath(destino);
  const QDir carpeta(origen);
  for (const QString& nombre : carpeta.entryList(QDir::AllEntries | QDir::NoDotAndDotDot))
    copia(carpeta.filePath(nombre), destino + QLatin1Char('/') + nombre);
}

}  // namespace

QString carpetaDelPrograma(const QString& instalada, const QString& propia) {
  const auto escrita = [](const QString& carpeta) {
    return rutaPrograma(QDir(carpeta).absolutePath()) + QLatin1Char('\\');
  };
  if (QFileInfo(instalada).isWritable()) return escrita(instalada);
  if (!QDir(propia).exists()) {
    QDir().mkpath(propia);
    // A system-wide install keeps what comes with a program apart from the program itself.
    for (const QString& carpeta :
         {instalada, QDir::cleanPath(instalada + QStringLiteral("/../share/librano"))})
      for (const char* nombre : kAcompanantes) {
        const QString origen =
            rutaSistema(rutaPrograma(carpeta) + QLatin1Char('\\') + QLatin1String(nombre));
        if (QFileInfo::exists(origen)) copia(origen, QDir(propia).filePath(QLatin1String(nombre)));
      }
  }
  return escrita(propia);
}

void completaImpresos(const QString& carpetaPrograma, const QString& dirDatos) {
  const QString carpeta = QStringLiteral("Impresos");
  const QString origen = rutaSistema(carpetaPrograma + carpeta);
  if (dirDatos.isEmpty() || !QDir(rutaSistema(dirDatos)).exists() || !QFileInfo(origen).isDir())
    return;
  copia(origen, rutaSistema(dirDatos + carpeta));
}

void ejecutaPrograma(const QString& programa, const QStringList& argumentos) {
  QString ruta = rutaSistema(programa);
  if (!QFileInfo::exists(ruta)) ruta = rutaSistema(programa + QStringLiteral(".exe"));
  const QFileInfo info(ruta);
  if (!info.isFile() ||
      !QProcess::startDetached(info.absoluteFilePath(), argumentos, info.absolutePath()))
    throw ErrorEjecucion(err::kFicheroNoEncontrado, programa);
}

std::optional<HojaDeCalculo> hojaDeCalculoOculta(const QString& libro) {
  for (const Candidata& hoja : kHojas) {
    const QString ruta = QStandardPaths::findExecutable(QLatin1String(hoja.nombre));
    if (!ruta.isEmpty())
      return HojaDeCalculo{rutaPrograma(ruta), {QLatin1String(hoja.oculta), rutaSistema(libro)}};
  }
  return std::nullopt;
}
