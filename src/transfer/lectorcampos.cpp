#include "transfer/lectorcampos.h"

#include <algorithm>
#include <QFileInfo>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "common/textooccidental.h"

namespace {

constexpr int kFin = -1;
constexpr char kFinDeTexto = '\x1A';  // ends a text file of DOS
constexpr qint64 kBufer = 256 * 1024;
constexpr qsizetype kLargoMaximo = 64 * 1024;  // of a field: beyond it a quote was never closed

bool esBlanco(int byte) {
  return byte == ' ' || byte == '\t';
}

bool esSalto(int byte) {
  return byte == '\r' || byte == '\n';
}

}  // namespace

LectorCampos::LectorCampos(const QString& ruta) : fichero_(rutaSistema(ruta)) {
  if (!QFileInfo(fichero_).isFile()) throw ErrorEjecucion(err::kFicheroNoEncontrado, ruta);
  if (!fichero_.open(QIODevice::ReadOnly)) throw ErrorEjecucion(err::kErrorDeRuta, ruta);
  // The signature of a file in UTF-8 is no part of its first field.
  constexpr QByteArrayView kFirma("\xEF\xBB\xBF");
  if (mira() != kFin && bufer_.startsWith(kFirma)) at_ = kFirma.size();
}

int LectorCampos::mira() {
  if (at_ == bufer_.size()) {
    antes_ += bufer_.size();
    at_ = 0;
    bufer_ = fichero_.read(kBufer);
    if (bufer_.isEmpty()) return kFin;
  }
  const char byte = bufer_[at_];
  return byte == kFinDeTexto ? kFin : static_cast<unsigned char>(byte);
}

int LectorCampos::toma() {
  const int byte = mira();
  if (byte != kFin) ++at_;
  return byte;
}

void LectorCampos::saltaBlancos() {
  while (esBlanco(mira())) toma();
}

bool LectorCampos::fin() {
  while (esBlanco(mira()) || esSalto(mira())) toma();
  return mira() == kFin;
}

void LectorCampos::anade(QByteArray& campo, QByteArrayView bytes) const {
  if (campo.size() + bytes.size() > kLargoMaximo)
    throw ErrorEjecucion(err::kTextoDemasiadoLargo,
                         QString::fromLatin1(campo.left(20)) + QStringLiteral("..."));
  campo += bytes;
}

QByteArray LectorCampos::entrecomillado() {
  QByteArray campo;
  toma();
  for (int byte = toma(); byte != kFin; byte = toma()) {
    if (byte == '"' && mira() != '"') break;
    if (byte == '"') toma();
    const char suyo = static_cast<char>(byte);
    anade(campo, QByteArrayView(&suyo, 1));
  }
  // What stands between the quote and the comma belongs to nobody.
  while (mira() != kFin && mira() != ',' && !esSalto(mira())) toma();
  return campo;
}

QByteArray LectorCampos::suelto() {
  QByteArray campo;
  while (mira() != kFin && mira() != ',' && !esSalto(mira())) {
    // What the buffer has of it, in one go.
    const QByteArrayView resto = QByteArrayView(bufer_).sliced(at_);
    const auto acaba = [](char c) { return c == ',' || esSalto(c) || c == kFinDeTexto; };
    const auto trozo = std::find_if(resto.begin(), resto.end(), acaba) - resto.begin();
    anade(campo, resto.first(trozo));
    at_ += trozo;
  }
  return campo.trimmed();
}

bool LectorCampos::saltaSeparador() {
  saltaBlancos();
  const int byte = toma();
  if (byte == '\r' && mira() == '\n') toma();
  return byte == ',';
}

QStringList LectorCampos::lee(int cuantos) {
  QStringList campos;
  campos.reserve(cuantos);
  bool trasComa = false;  // an empty field may be the last thing in the file
  while (campos.size() < cuantos) {
    saltaBlancos();
    if (mira() == kFin && !trasComa) throw ErrorEjecucion(err::kFinDeFichero, fichero_.fileName());
    campos += leeTexto(mira() == '"' ? entrecomillado() : suelto());
    trasComa = saltaSeparador();
  }
  return campos;
}
