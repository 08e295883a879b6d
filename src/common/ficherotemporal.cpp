#include "common/ficherotemporal.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

namespace {

constexpr QLatin1String kFinal(".tmp");

QString nombreTemporal(const QString& destino) {
  return destino + QStringLiteral(".%1@").arg(QCoreApplication::applicationPid()) +
         QSysInfo::machineHostName() + kFinal;
}

// Whether nobody is at work on it any more. Who works on another machine can't be asked.
bool estaAbandonado(const QFileInfo& fichero, const QString& proceso) {
  constexpr int kDiasDeOtros = 1;
  const QString maquina = proceso.section(u'@', 1);
  if (!maquina.isEmpty() && maquina != QSysInfo::machineHostName())
    return fichero.lastModified().daysTo(QDateTime::currentDateTime()) > kDiasDeOtros;
  const auto pid = static_cast<pid_t>(proceso.section(u'@', 0, 0).toInt());
  return pid <= 0 || (::kill(pid, 0) != 0 && errno == ESRCH);
}

// What was being made of the same place when it was broken off.
void borraAbandonados(const QString& destino) {
  const QString comienzo = QFileInfo(destino).fileName() + u'.';
  const QFileInfoList ficheros = QFileInfo(destino).dir().entryInfoList(QDir::Files);
  for (const QFileInfo& fichero : ficheros) {
    const QString nombre = fichero.fileName();
    const qsizetype fin = nombre.indexOf(kFinal, comienzo.size());
    if (!nombre.startsWith(comienzo) || fin < 0) continue;
    if (estaAbandonado(fichero, nombre.mid(comienzo.size(), fin - comienzo.size())))
      QFile::remove(fichero.filePath());
  }
}

// What was written reaches the disk before the name does.
bool sincroniza(const QString& ruta) {
  const int fichero = ::open(QFile::encodeName(ruta).constData(), O_RDONLY | O_CLOEXEC);
  if (fichero < 0) return false;
  const bool hecho = ::fsync(fichero) == 0;
  ::close(fichero);
  return hecho;
}

}  // namespace

FicheroTemporal::FicheroTemporal(const QString& destino)
    : destino_(destino), ruta_(nombreTemporal(destino)) {
  borra();
  borraAbandonados(destino);
}

FicheroTemporal::~FicheroTemporal() {
  borra();
}

void FicheroTemporal::borra() const {
  const QFileInfo propio(ruta_);
  const QStringList suyos =
      propio.dir().entryList({propio.fileName() + u'*'}, QDir::Files | QDir::Hidden);
  for (const QString& nombre : suyos) QFile::remove(propio.dir().filePath(nombre));
}

bool FicheroTemporal::ocupaSuSitio() const {
  if (!sincroniza(ruta_)) return false;
  if (std::rename(QFile::encodeName(ruta_).constData(), QFile::encodeName(destino_).constData()) !=
      0)
    return false;
  sincroniza(QFileInfo(destino_).path());
  return true;
}
