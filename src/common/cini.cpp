#include "common/cini.h"

#define SI_NO_CONVERSION  // the file is bytes of UTF-8, never wide characters
#include <SimpleIni.h>

#include <QFile>
#include <QSaveFile>

#include "common/rutas.h"
#include "common/textooccidental.h"

namespace {

// What one reading of a value holds.
constexpr int kLongitudMaxima = 254;

void carga(CSimpleIniA& ini, const QString& archivo) {
  ini.SetUnicode(true);
  ini.SetSpaces(false);
  QFile fichero(rutaSistema(archivo));
  if (!fichero.open(QIODevice::ReadOnly)) return;
  const QByteArray texto = leeTexto(fichero.readAll()).toUtf8();
  ini.LoadData(texto.constData(), static_cast<size_t>(texto.size()));
}

}  // namespace

void CIni::Grabar(const QString& Archivo, const QString& Seccion, const QString& Clave,
                  const QString& Valor) {
  CSimpleIniA ini;
  carga(ini, Archivo);
  QString valor = Valor;
  valor.replace(u'\r', u' ').replace(u'\n', u' ');
  ini.SetValue(Seccion.toUtf8().constData(), Clave.toUtf8().constData(),
               valor.toUtf8().constData());

  std::string salida;
  ini.Save(salida);
  QByteArray texto = QByteArray::fromStdString(salida);
  texto.replace("\r\n", "\n").replace("\n", "\r\n");
  QSaveFile fichero(rutaSistema(Archivo));
  if (!fichero.open(QIODevice::WriteOnly)) return;
  fichero.write(texto);
  fichero.commit();
}

void CIni::Leer(const QString& Archivo, const QString& Seccion, const QString& Clave,
                QString& Valor) {
  CSimpleIniA ini;
  carga(ini, Archivo);
  const char* const valor =
      ini.GetValue(Seccion.toUtf8().constData(), Clave.toUtf8().constData(), "");
  Valor = QString::fromUtf8(valor).trimmed().left(kLongitudMaxima).trimmed();
}
