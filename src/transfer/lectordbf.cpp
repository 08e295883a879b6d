#include "transfer/lectordbf.h"

#include <shapefil.h>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>
#include <QFile>
#include <QFileInfo>
#include <vector>

#include "common/errorejecucion.h"
#include "common/funciones.h"
#include "common/rutas.h"
#include "common/textooccidental.h"

namespace {

struct Cierre {
  void operator()(DBFInfo* tabla) const { DBFClose(tabla); }
};
using Tabla = std::unique_ptr<DBFInfo, Cierre>;

// The library spells the ending its own way, and asks for a second file with the code page, which
// these tables haven't got.
SAFile abreFichero(const char* nombre, const char* modo) {
  const QString pedido = QFile::decodeName(nombre);
  if (pedido.endsWith(QLatin1String(".cpg"), Qt::CaseInsensitive)) return nullptr;
  return reinterpret_cast<SAFile>(
      std::fopen(QFile::encodeName(rutaSistema(pedido)).constData(), modo));
}

Tabla abreTabla(const QString& ruta) {
  SAHooks sistema;
  SASetupDefaultHooks(&sistema);
  sistema.FOpen = abreFichero;
  sistema.Error = [](const char*) {};  // what fails is told by an error of ours
  return Tabla(DBFOpenLL(QFile::encodeName(ruta).constData(), "rb", &sistema));
}

// The library trusts what the head says of its records.
void comprueba(const DBFInfo& tabla, qint64 bytes, const QString& ruta) {
  bool caben = tabla.nFields > 0;
  for (int i = 0; i < tabla.nFields; ++i)
    caben = caben && tabla.panFieldOffset[i] > 0 && tabla.panFieldSize[i] >= 0 &&
            tabla.panFieldOffset[i] + tabla.panFieldSize[i] <= tabla.nRecordLength;
  if (!caben) throw ErrorEjecucion(err::kFormatoNoReconocido, ruta);
  const qint64 hay = std::max<qint64>(bytes - tabla.nHeaderLength, 0) / tabla.nRecordLength;
  if (hay >= tabla.nRecords) return;
  throw ErrorEjecucion(err::kFormatoNoReconocido,
                       QStringLiteral("%1 está cortada; de sus %2 registros sólo hay %3")
                           .arg(ruta, QString::number(tabla.nRecords), QString::number(hay)));
}

// The page that a table tells by the mark of its language; nothing if it tells none that is known.
std::optional<PaginaDeCodigos> paginaDeMarca(int marca) {
  switch (marca) {
    case 0x01:
    case 0x09:
    case 0x0B:
    case 0x0D:
    case 0x0F:
    case 0x11:
    case 0x15:
    case 0x18:
    case 0x19:
    case 0x1B:
      return PaginaDeCodigos::Dos437;
    case 0x02:
    case 0x0A:
    case 0x0E:
    case 0x10:
    case 0x12:
    case 0x14:
    case 0x16:
    case 0x1A:
    case 0x1D:
    case 0x25:
    case 0x37:
      return PaginaDeCodigos::Dos850;
    case 0x03:
    case 0x57:
    case 0x58:
    case 0x59:
      return PaginaDeCodigos::Occidental;
    default:
      return std::nullopt;
  }
}

// How the letters of a table without a mark read. Each byte after a letter is a letter itself in
// one of both pages, and a sign that stands in no word in the other: é ü í ó ú ñ Ñ of DOS are
// quotes and currency signs in Windows, á é í ó ú ñ of Windows are frames in DOS.
class Lecturas {
 public:
  void mira(QByteArrayView texto) {
    static constexpr QByteArrayView kDeDos("\x81\x82\x90\xA1\xA2\xA3\xA4\xA5");
    static constexpr QByteArrayView kDeWindows(
        "\xC1\xC9\xCD\xD1\xD3\xDA\xDC\xE1\xE9\xED\xF1\xF3\xFA\xFC");
    for (qsizetype i = 1; i < texto.size(); ++i) {
      if (static_cast<unsigned char>(texto[i]) < 0x80 || !std::isalpha(texto[i - 1] & 0xFF))
        continue;
      if (kDeDos.contains(texto[i])) ++deDos_;
      if (kDeWindows.contains(texto[i])) ++deWindows_;
    }
  }
  PaginaDeCodigos pagina() const {
    return deDos_ > deWindows_ ? PaginaDeCodigos::Dos850 : PaginaDeCodigos::Occidental;
  }

 private:
  int deDos_ = 0;
  int deWindows_ = 0;
};

QByteArrayView sinBlancosAlFinal(QByteArrayView celda) {
  while (!celda.isEmpty() && (celda.back() == ' ' || celda.back() == '\0')) celda.chop(1);
  return celda;
}

// The cell as it is kept can't be what its column is.
[[noreturn]] void noConvierte(const QString& columna, QByteArrayView celda) {
  throw ErrorEjecucion(err::kConversionDeDatos,
                       columna + QStringLiteral(" = ") + QString::fromLatin1(celda));
}

Variant numero(const QString& columna, QByteArrayView celda) {
  QByteArrayView cifras = celda.trimmed();
  if (cifras.startsWith('+')) cifras = cifras.sliced(1);
  double valor = 0;
  const auto [fin, fallo] = std::from_chars(cifras.begin(), cifras.end(), valor);
  if (fallo != std::errc() || fin != cifras.end() || !std::isfinite(valor))
    noConvierte(columna, celda);
  return valor;
}

Variant fecha(const QString& columna, QByteArrayView celda) {
  int cifras = 0;  // "20030215"
  const auto [fin, fallo] = std::from_chars(celda.begin(), celda.end(), cifras);
  const bool entera = fallo == std::errc() && fin == celda.end() && celda.size() == 8;
  const QDate dia = entera ? QDate(cifras / 10000, cifras / 100 % 100, cifras % 100) : QDate();
  if (dia.isValid()) return dia;
  if (celda.count('0') == celda.size()) return {};
  noConvierte(columna, celda);
}

Variant logico(char celda) {
  if (QByteArrayView("TtYySs").contains(celda)) return true;
  if (QByteArrayView("FfNn").contains(celda)) return false;
  return {};
}

}  // namespace

struct TablaDbf::Privado {
  QString ruta;
  Tabla tabla;
  QStringList nombres;
  PaginaDeCodigos pagina = PaginaDeCodigos::Occidental;
  int actual = -1;
  const char* bytes = nullptr;  // of the current record

  const char* lee(int registro) const {
    const char* leido = DBFReadTuple(tabla.get(), registro);
    if (!leido) throw ErrorEjecucion(err::kErrorDeDisco, ruta);
    return leido;
  }
  QByteArrayView celda(const char* registro, int columna) const {
    return sinBlancosAlFinal(
        QByteArrayView(registro + tabla->panFieldOffset[columna], tabla->panFieldSize[columna]));
  }
  PaginaDeCodigos paginaSinMarca() const;
};

PaginaDeCodigos TablaDbf::Privado::paginaSinMarca() const {
  Lecturas lecturas;
  for (int i = 0; i < tabla->nRecords; ++i) {
    const char* const registro = lee(i);
    for (int columna = 0; columna < tabla->nFields; ++columna)
      if (tabla->pachFieldType[columna] == 'C') lecturas.mira(celda(registro, columna));
  }
  return lecturas.pagina();
}

TablaDbf::TablaDbf(const QString& carpeta, const QString& tabla) : p_(std::make_unique<Privado>()) {
  p_->ruta = AjustaBarra(carpeta) + tabla;
  const QFileInfo fichero(rutaSistema(p_->ruta));
  if (!fichero.isFile()) throw ErrorEjecucion(err::kFicheroNoEncontrado, p_->ruta);
  p_->tabla = abreTabla(fichero.filePath());
  if (!p_->tabla) throw ErrorEjecucion(err::kFormatoNoReconocido, p_->ruta);
  comprueba(*p_->tabla, fichero.size(), p_->ruta);
  for (int i = 0; i < p_->tabla->nFields; ++i) {
    char nombre[XBASE_FLDNAME_LEN_READ + 1];
    DBFGetFieldInfo(p_->tabla.get(), i, nombre, nullptr, nullptr);
    p_->nombres += QString::fromLatin1(nombre);
  }
  const auto marcada = paginaDeMarca(p_->tabla->iLanguageDriver);
  p_->pagina = marcada ? *marcada : p_->paginaSinMarca();
}

TablaDbf::~TablaDbf() = default;

int TablaDbf::total() const {
  return p_->tabla->nRecords;
}

int TablaDbf::registro() const {
  return p_->actual;
}

bool TablaDbf::siguiente() {
  constexpr char kBorrado = '*';
  while (++p_->actual < total()) {
    p_->bytes = p_->lee(p_->actual);
    if (*p_->bytes != kBorrado) return true;
  }
  p_->actual = total();
  p_->bytes = nullptr;
  return false;
}

int TablaDbf::columna(const QString& nombre) const {
  for (qsizetype i = 0; i < p_->nombres.size(); ++i)
    if (p_->nombres[i].compare(nombre, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  throw ErrorEjecucion(err::kElementoNoEncontrado, p_->ruta + QStringLiteral(", ") + nombre);
}

Variant TablaDbf::valor(int columna) const {
  if (!p_->bytes) throw ErrorEjecucion(err::kSinRegistroActivo);
  if (columna < 0 || columna >= p_->nombres.size())
    throw ErrorEjecucion(err::kElementoNoEncontrado,
                         p_->ruta + QStringLiteral(", columna %1").arg(columna + 1));
  const QByteArrayView celda = p_->celda(p_->bytes, columna);
  if (celda.trimmed().isEmpty()) return {};
  switch (p_->tabla->pachFieldType[columna]) {
    case 'C':
      return leeTexto(celda, p_->pagina);
    case 'N':
    case 'F':
      return numero(p_->nombres[columna], celda);
    case 'D':
      return fecha(p_->nombres[columna], celda);
    case 'L':
      return logico(celda.front());
    default:
      return {};
  }
}
