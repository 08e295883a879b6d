#include "transfer/archivozip.h"

#include <sys/stat.h>
#include <zip.h>
#include <algorithm>
#include <array>
#include <memory>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include "common/errorejecucion.h"
#include "common/rutas.h"

namespace {

constexpr qsizetype kTrozo = 1 << 18;
constexpr qint64 kHolgura = 1 << 20;  // bytes of the disk that are left alone
constexpr int kPartes = 1000;
constexpr QByteArrayView kMarcaDeBase("SQLite format 3\0", 16);

struct Cierra {
  void operator()(zip_t* z) const { zip_discard(z); }
  void operator()(zip_file_t* f) const { zip_fclose(f); }
};
using Archivo = std::unique_ptr<zip_t, Cierra>;
using Entrada = std::unique_ptr<zip_file_t, Cierra>;

[[noreturn]] void noSirve(const QString& motivo) {
  throw ErrorEjecucion(err::kArchivoNoSirve, motivo);
}

// Told by the folder: the file has a name for the time being.
[[noreturn]] void sinSitio(const QString& destino) {
  throw ErrorEjecucion(err::kSinEspacio, rutaPrograma(QFileInfo(destino).path()));
}

QString textoDe(zip_error_t& error) {
  return QString::fromUtf8(zip_error_strerror(&error));
}

Archivo abre(const QString& archivo, int modo) {
  int codigo = 0;
  Archivo z(zip_open(QFile::encodeName(archivo).constData(), modo, &codigo));
  if (z) return z;
  const bool leyendo = (modo & ZIP_RDONLY) != 0;
  if (!leyendo || codigo == ZIP_ER_OPEN || codigo == ZIP_ER_READ)
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(archivo));
  noSirve(QStringLiteral("no es un archivo zip o está dañado"));
}

// --- packing

using Avance = std::function<bool(int, int)>;

void escribeArchivo(const QString& fichero, const QString& archivo, const QString& nombre,
                    const Avance& avance) {
  Archivo z = abre(archivo, ZIP_CREATE | ZIP_TRUNCATE);
  zip_source_t* origen = zip_source_file(z.get(), QFile::encodeName(fichero).constData(), 0, -1);
  if (!origen || zip_file_add(z.get(), nombre.toUtf8().constData(), origen, 0) < 0) {
    zip_source_free(origen);
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(fichero));
  }
  // Packing is by far the longer half of it.
  struct Camino {
    const Avance& avance;
    bool sigue = true;
  } camino{avance};
  zip_register_progress_callback_with_state(
      z.get(), 0.001,
      [](zip_t*, double parte, void* c) {
        auto& camino = *static_cast<Camino*>(c);
        camino.sigue =
            camino.sigue && camino.avance(static_cast<int>(parte * kPartes * 0.9), kPartes);
      },
      nullptr, &camino);
  zip_register_cancel_callback_with_state(
      z.get(), [](zip_t*, void* c) { return static_cast<Camino*>(c)->sigue ? 0 : 1; }, nullptr,
      &camino);
  if (zip_close(z.get()) == 0) {
    static_cast<void>(z.release());
    return;
  }
  zip_error_t* error = zip_get_error(z.get());
  if (!camino.sigue) throw ErrorEjecucion(err::kOperacionCancelada);
  const bool lleno =
      zip_error_system_type(error) == ZIP_ET_SYS && zip_error_code_system(error) == ENOSPC;
  throw ErrorEjecucion(lleno ? err::kSinEspacio : err::kErrorDeRuta,
                       rutaPrograma(archivo) + QStringLiteral(" (%1)").arg(textoDe(*error)));
}

// What the archive holds is what the file holds.
void leeLoEscrito(const QString& fichero, const QString& archivo, const Avance& avance) {
  QFile original(fichero);
  Archivo z = abre(archivo, ZIP_RDONLY);
  const Entrada entrada(zip_fopen_index(z.get(), 0, 0));
  bool igual =
      entrada && zip_get_num_entries(z.get(), 0) == 1 && original.open(QIODevice::ReadOnly);
  QByteArray leido(kTrozo, '\0'), escrito(kTrozo, '\0');
  while (igual) {
    const qint64 n = original.read(escrito.data(), kTrozo);
    const zip_int64_t m = zip_fread(entrada.get(), leido.data(), kTrozo);
    igual = n == m && std::equal(leido.cbegin(), leido.cbegin() + n, escrito.cbegin());
    if (n <= 0) break;
    const double parte = static_cast<double>(original.pos()) / static_cast<double>(original.size());
    if (!avance(static_cast<int>(kPartes * (0.9 + parte / 10)), kPartes))
      throw ErrorEjecucion(err::kOperacionCancelada);
  }
  if (!igual)
    throw ErrorEjecucion(err::kErrorDeDisco,
                         QStringLiteral("lo escrito en la copia no es lo que se lee de ella"));
}

// --- unpacking

// The name that a file would have without the folders it is packed with, whatever tool wrote them.
QByteArray nombreSuelto(const QByteArray& nombre) {
  const qsizetype barra = std::max(nombre.lastIndexOf('/'), nombre.lastIndexOf('\\'));
  return nombre.mid(barra + 1);
}

bool esEnlace(zip_t* z, zip_uint64_t indice) {
  zip_uint8_t sistema = 0;
  zip_uint32_t atributos = 0;
  if (zip_file_get_external_attributes(z, indice, 0, &sistema, &atributos) != 0) return false;
  return sistema == ZIP_OPSYS_UNIX && S_ISLNK(atributos >> 16);
}

// The one that lies in no folder goes before others.
zip_uint64_t busca(zip_t* z, const QString& nombre) {
  const QByteArray buscado = nombre.toUtf8().toLower();
  QList<zip_uint64_t> sueltos, todos;
  const zip_int64_t cuantos = zip_get_num_entries(z, 0);
  for (zip_int64_t i = 0; i < cuantos; ++i) {
    const auto indice = static_cast<zip_uint64_t>(i);
    const QByteArray suyo(zip_get_name(z, indice, ZIP_FL_ENC_RAW));
    if (nombreSuelto(suyo).toLower() != buscado || esEnlace(z, indice)) continue;
    todos << indice;
    if (suyo.size() == buscado.size()) sueltos << indice;
  }
  const auto& elegidos = sueltos.isEmpty() ? todos : sueltos;
  if (elegidos.isEmpty()) noSirve(QStringLiteral("no contiene el fichero %1").arg(nombre));
  if (elegidos.size() > 1)
    noSirve(QStringLiteral("contiene varios ficheros %1 y no se sabe cuál es").arg(nombre));
  return elegidos.constFirst();
}

qint64 medida(zip_t* z, zip_uint64_t indice, const QString& destino) {
  zip_stat_t datos;
  zip_stat_init(&datos);
  if (zip_stat_index(z, indice, 0, &datos) != 0 || !(datos.valid & ZIP_STAT_SIZE))
    noSirve(QStringLiteral("no es un archivo zip o está dañado"));
  if ((datos.valid & ZIP_STAT_ENCRYPTION_METHOD) && datos.encryption_method != ZIP_EM_NONE)
    noSirve(QStringLiteral("está protegido con una contraseña"));
  const qint64 libre = QStorageInfo(QFileInfo(destino).path()).bytesAvailable();
  if (libre >= 0 && datos.size > static_cast<zip_uint64_t>(std::max<qint64>(0, libre - kHolgura)))
    sinSitio(destino);
  return static_cast<qint64>(datos.size);
}

}  // namespace

void comprime(const QString& fichero, const QString& archivo, const QString& nombre,
              const Avance& avance) {
  escribeArchivo(fichero, archivo, nombre, avance);
  leeLoEscrito(fichero, archivo, avance);
}

void descomprime(const QString& archivo, const QString& nombre, const QString& destino,
                 const Advance& avance) {
  if (!QFileInfo(archivo).isFile())
    throw ErrorEjecucion(err::kFicheroNoEncontrado, rutaPrograma(archivo));
  Archivo z = abre(archivo, ZIP_RDONLY);
  const zip_uint64_t indice = busca(z.get(), nombre);
  const qint64 total = medida(z.get(), indice, destino);
  const Entrada entrada(zip_fopen_index(z.get(), indice, 0));
  if (!entrada) noSirve(textoDe(*zip_get_error(z.get())));
  QFile fichero(destino);
  if (!fichero.open(QIODevice::WriteOnly | QIODevice::Truncate))
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(destino));
  QByteArray trozo(kTrozo, '\0');
  for (qint64 hecho = 0;;) {
    const zip_int64_t n = zip_fread(entrada.get(), trozo.data(), kTrozo);
    // Neither more nor less than it says, by whatever sum it says so.
    if (n < 0 || hecho + n > total || (n == 0 && hecho != total))
      noSirve(QStringLiteral("está dañado"));
    if (hecho == 0 && !QByteArrayView(trozo).first(n).startsWith(kMarcaDeBase))
      noSirve(QStringLiteral("su fichero %1 no es una base de datos").arg(nombre));
    if (n == 0) break;
    if (fichero.write(trozo.constData(), n) != n) sinSitio(destino);
    hecho += n;
    avance(static_cast<int>(kPartes * static_cast<double>(hecho) / static_cast<double>(total)),
           kPartes);
  }
  fichero.close();
  if (fichero.error() != QFileDevice::NoError) sinSitio(destino);
}
