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
  total_ = fichero_.size();
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
  const char byte = bufer_.at(at_);
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

// What the buffer has before the byte that ends it, in one go.
template <class Acaba>
QByteArrayView LectorCampos::trozoHasta(Acaba acaba) {
  const QByteArrayView resto = QByteArrayView(bufer_).sliced(at_);
  const auto trozo = resto.first(std::find_if(resto.begin(), resto.end(), acaba) - resto.begin());
  at_ += trozo.size();
  return trozo;
}

QString LectorCampos::entrecomillado() {
  QByteArray campo;
  toma();
  while (mira() != kFin) {
    anade(campo, trozoHasta([](char c) { return c == '"' || c == kFinDeTexto; }));
    if (mira() != '"') continue;  // the field goes on in the next buffer
    toma();
    if (mira() != '"') break;
    toma();
    anade(campo, "\"");
  }
  // What stands between the quote and the comma belongs to nobody.
  while (!acabado()) toma();
  return leeTexto(campo);
}

bool LectorCampos::acabado() {
  const int byte = mira();
  return byte == kFin || byte == ',' || esSalto(byte);
}

QString LectorCampos::suelto() {
  const auto acaba = [](char c) { return c == ',' || esSalto(c) || c == kFinDeTexto; };
  const QByteArrayView trozo = trozoHasta(acaba);
  const bool entero = at_ < bufer_.size() && trozo.size() <= kLargoMaximo;
  if (entero) return leeTexto(trozo.trimmed());
  QByteArray campo;
  anade(campo, trozo);
  while (!acabado()) anade(campo, trozoHasta(acaba));
  return leeTexto(campo.trimmed());
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
    campos += mira() == '"' ? entrecomillado() : suelto();
    trasComa = saltaSeparador();
  }
  return campos;
}
