#include "start/programas.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMultiHash>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QVersionNumber>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "common/version.h"

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

// --- templates

using Sumas = QMultiHash<QString, QString>;  // of the contents, by the name of the file
constexpr QLatin1String kAnteriores("anteriores.txt");
constexpr QLatin1String kCopiados("copiados.txt");
constexpr QLatin1String kDeVersion("# Librano ");

QByteArray contenido(const QString& ruta) {
  QFile fichero(ruta);
  return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

QString suma(const QByteArray& texto) {
  return QString::fromLatin1(QCryptographicHash::hash(texto, QCryptographicHash::Sha1).toHex());
}

bool escribe(const QString& ruta, const QByteArray& texto) {
  QSaveFile fichero(ruta);
  return fichero.open(QIODevice::WriteOnly) && fichero.write(texto) == texto.size() &&
         fichero.commit();
}

// Lines of a sum and a name; others say something else.
Sumas sumasDe(const QByteArray& texto) {
  Sumas sumas;
  for (const QString& linea : QString::fromUtf8(texto).split(u'\n')) {
    const QString nombre = linea.section(u' ', 1);
    if (!linea.startsWith(u'#') && !nombre.isEmpty())
      sumas.insert(nombre, linea.section(u' ', 0, 0));
  }
  return sumas;
}

bool esDeOtraPosterior(const QByteArray& copiados) {
  const QString primera = QString::fromUtf8(copiados).section(u'\n', 0, 0);
  if (!primera.startsWith(kDeVersion)) return false;
  return QVersionNumber::fromString(primera.mid(kDeVersion.size())) >
         QVersionNumber::fromString(versionDelPrograma());
}

// Templates that still are what some version came with become this one's. Which those are is noted
// beside them, so that stations with different versions don't undo each other's.
void renueva(const QDir& origen, const QDir& destino) {
  const QByteArray copiados = contenido(destino.filePath(kCopiados));
  if (esDeOtraPosterior(copiados)) return;
  const Sumas conocidas = sumasDe(contenido(origen.filePath(kAnteriores))) + sumasDe(copiados);
  QStringList notas{kDeVersion + versionDelPrograma()};
  const QStringList nombres = origen.entryList(QDir::Files, QDir::Name);
  for (const QString& nombre : nombres) {
    const QByteArray nueva = contenido(origen.filePath(nombre));
    QString hay = suma(contenido(destino.filePath(nombre)));
    if (hay != suma(nueva) && conocidas.contains(nombre, hay) &&
        escribe(destino.filePath(nombre), nueva))
      hay = suma(nueva);
    if (hay == suma(nueva) || conocidas.contains(nombre, hay)) notas << hay + u' ' + nombre;
  }
  const QByteArray ahora = (notas.join(u'\n') + u'\n').toUtf8();
  if (ahora != copiados) escribe(destino.filePath(kCopiados), ahora);
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
  const QString destino = rutaSistema(dirDatos + carpeta);
  if (QFileInfo(origen) == QFileInfo(destino)) return;  // the data beside the program
  copia(origen, destino);
  renueva(QDir(origen), QDir(destino));
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
