#include "soporte/disco.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>
#include <QtCore>
#include <stdexcept>

#include "soporte/ficheros.h"

namespace {

constexpr int kSector = 512;

struct Suceso {
  enum Tipo { Crear, Escribir, Acortar, Sincronizar, SincronizarCarpeta, Borrar, Renombrar };
  Tipo tipo;
  QString fichero;
  qint64 lugar = 0;  // or the size that is left
  QByteArray datos = {};
  QString nuevo = {};  // name
};

void escribe(QByteArray& contenido, qint64 lugar, QByteArrayView datos) {
  if (contenido.size() < lugar + datos.size())
    contenido.append(lugar + datos.size() - contenido.size(), '\0');
  std::copy(datos.begin(), datos.end(), contenido.begin() + lugar);
}

}  // namespace

struct Disco::Privado {
  QString carpeta;  // that is recorded
  bool grabando = false;
  QMap<QString, QByteArray> principio;
  std::vector<Suceso> sucesos;
  std::vector<int> marcas;  // the number of events at each

  std::optional<Operacion> falla;
  int cuantas = 0, cual = 0;
  bool siempre = false;

  // Whether this one fails.
  bool toca(std::initializer_list<Operacion> operaciones) {
    if (!falla || std::find(operaciones.begin(), operaciones.end(), *falla) == operaciones.end())
      return false;
    ++cuantas;
    return siempre ? cuantas >= cual : cuantas == cual;
  }
  bool graba(const QString& ruta) const {
    return grabando && (ruta == carpeta || ruta.startsWith(carpeta + u'/'));
  }
  void anota(Suceso suceso) {
    if (graba(suceso.fichero)) sucesos.push_back(std::move(suceso));
  }
};

namespace {

using Operacion = Disco::Operacion;
using Metodos = sqlite3_io_methods;

Disco::Privado* vivo = nullptr;  // of the disk that lives
sqlite3_vfs* sistema = nullptr;  // the layer beneath

// --- A file of the library

struct Fichero {
  sqlite3_file base;
  char* ruta;  // null for a temporary one
  sqlite3_file* suyo() { return reinterpret_cast<sqlite3_file*>(this + 1); }
  QString nombre() const { return ruta ? QString::fromUtf8(ruta) : QString(); }
};

Fichero& de(sqlite3_file* fichero) {
  return *reinterpret_cast<Fichero*>(fichero);
}

// What needs no look is handed on.
template <auto Metodo, class... Datos>
int pasa(sqlite3_file* f, Datos... datos) {
  return (de(f).suyo()->pMethods->*Metodo)(de(f).suyo(), datos...);
}

int cierra(sqlite3_file* f) {
  const int codigo = pasa<&Metodos::xClose>(f);
  sqlite3_free(de(f).ruta);
  return codigo;
}

int lee(sqlite3_file* f, void* datos, int cuantos, sqlite3_int64 lugar) {
  if (vivo->toca({Operacion::Leer})) return SQLITE_IOERR_READ;
  return pasa<&Metodos::xRead>(f, datos, cuantos, lugar);
}

int anade(sqlite3_file* f, const void* datos, int cuantos, sqlite3_int64 lugar) {
  if (vivo->toca({Operacion::Escribir, Operacion::Llenar}))
    return vivo->falla == Operacion::Llenar ? SQLITE_FULL : SQLITE_IOERR_WRITE;
  vivo->anota({Suceso::Escribir, de(f).nombre(), lugar,
               QByteArray(static_cast<const char*>(datos), cuantos)});
  return pasa<&Metodos::xWrite>(f, datos, cuantos, lugar);
}

int acorta(sqlite3_file* f, sqlite3_int64 tamano) {
  if (vivo->toca({Operacion::Escribir})) return SQLITE_IOERR_TRUNCATE;
  vivo->anota({Suceso::Acortar, de(f).nombre(), tamano});
  return pasa<&Metodos::xTruncate>(f, tamano);
}

int sincroniza(sqlite3_file* f, int como) {
  if (vivo->toca({Operacion::Sincronizar})) return SQLITE_IOERR_FSYNC;
  return pasa<&Metodos::xSync>(f, como);
}

int bloquea(sqlite3_file* f, int nivel) {
  if (vivo->toca({Operacion::Bloquear})) return SQLITE_BUSY;
  return pasa<&Metodos::xLock>(f, nivel);
}

const Metodos kMetodos = [] {
  Metodos m{};
  m.iVersion = 1;
  m.xClose = cierra;
  m.xRead = lee;
  m.xWrite = anade;
  m.xTruncate = acorta;
  m.xSync = sincroniza;
  m.xFileSize = pasa<&Metodos::xFileSize>;
  m.xLock = bloquea;
  m.xUnlock = pasa<&Metodos::xUnlock>;
  m.xCheckReservedLock = pasa<&Metodos::xCheckReservedLock>;
  m.xFileControl = pasa<&Metodos::xFileControl>;
  m.xSectorSize = pasa<&Metodos::xSectorSize>;
  m.xDeviceCharacteristics = pasa<&Metodos::xDeviceCharacteristics>;
  return m;
}();

// --- The layer

int abre(sqlite3_vfs*, const char* ruta, sqlite3_file* f, int modo, int* salida) {
  Fichero& fichero = de(f);
  fichero.base.pMethods = nullptr;
  const bool nuevo = ruta && (modo & SQLITE_OPEN_CREATE) && !QFile::exists(QString::fromUtf8(ruta));
  if (nuevo && vivo->toca({Operacion::Escribir})) return SQLITE_CANTOPEN;
  const int codigo = sistema->xOpen(sistema, ruta, fichero.suyo(), modo, salida);
  if (codigo != SQLITE_OK) return codigo;
  fichero.base.pMethods = &kMetodos;
  fichero.ruta = ruta ? sqlite3_mprintf("%s", ruta) : nullptr;
  if (nuevo) vivo->anota({Suceso::Crear, fichero.nombre()});
  return SQLITE_OK;
}

int borra(sqlite3_vfs*, const char* ruta, int sincronizar) {
  if (vivo->toca({Operacion::Escribir})) return SQLITE_IOERR_DELETE;
  return sistema->xDelete(sistema, ruta, sincronizar);
}

sqlite3_vfs* capa() {
  static sqlite3_vfs propia = [] {
    sistema = sqlite3_vfs_find(nullptr);
    sqlite3_vfs capa = *sistema;
    capa.szOsFile = static_cast<int>(sizeof(Fichero)) + sistema->szOsFile;
    capa.pNext = nullptr;
    capa.zName = "disco";
    capa.xOpen = abre;
    capa.xDelete = borra;
    return capa;
  }();
  return &propia;
}

// --- What goes to the system directly: names, and what makes all of it last

template <typename F>
F delSistema(F, const char* nombre) {
  return reinterpret_cast<F>(dlsym(RTLD_NEXT, nombre));
}

// While a disk of ours lives it is enough to know: waiting for the real one would take most of the
// time of a test.
bool anotaSincronizado(int descriptor) {
  if (!vivo) return false;
  if (!vivo->grabando) return true;
  const QString ruta = QFile::symLinkTarget("/proc/self/fd/" + QString::number(descriptor));
  const bool deCarpeta = QFileInfo(ruta).isDir();
  vivo->anota({deCarpeta ? Suceso::SincronizarCarpeta : Suceso::Sincronizar, ruta});
  return true;
}

}  // namespace

extern "C" {

int fsync(int descriptor) {
  static const auto propia = delSistema(&fsync, "fsync");
  return anotaSincronizado(descriptor) ? 0 : propia(descriptor);
}

int fdatasync(int descriptor) {
  static const auto propia = delSistema(&fdatasync, "fdatasync");
  return anotaSincronizado(descriptor) ? 0 : propia(descriptor);
}

int unlink(const char* ruta) noexcept {
  static const auto propia = delSistema(&unlink, "unlink");
  const int codigo = propia(ruta);
  if (codigo == 0 && vivo) vivo->anota({Suceso::Borrar, QString::fromUtf8(ruta)});
  return codigo;
}

int renameat2(int carpeta, const char* ruta, int otra, const char* nueva,
              unsigned int modo) noexcept {
  static const auto propia = delSistema(&renameat2, "renameat2");
  const int codigo = propia(carpeta, ruta, otra, nueva, modo);
  if (codigo == 0 && vivo)
    vivo->anota({Suceso::Renombrar, QString::fromUtf8(ruta), 0, {}, QString::fromUtf8(nueva)});
  return codigo;
}

int rename(const char* ruta, const char* nueva) noexcept {
  static const auto propia = delSistema(&rename, "rename");
  const int codigo = propia(ruta, nueva);
  if (codigo == 0 && vivo)
    vivo->anota({Suceso::Renombrar, QString::fromUtf8(ruta), 0, {}, QString::fromUtf8(nueva)});
  return codigo;
}

}  // extern "C"

Disco::Disco() : d_(std::make_unique<Privado>()) {
  if (vivo) throw std::logic_error("another Disco lives");
  vivo = d_.get();
  sqlite3_vfs_register(capa(), 1);
}

Disco::~Disco() {
  sqlite3_vfs_unregister(capa());
  vivo = nullptr;
}

void Disco::graba(const QString& carpeta) {
  d_->carpeta = QDir(carpeta).canonicalPath();
  d_->grabando = true;
  d_->principio.clear();
  d_->sucesos.clear();
  d_->marcas.clear();
  QDirIterator it(d_->carpeta, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString ruta = it.next();
    d_->principio.insert(ruta, contenidoDe(ruta));
  }
}

void Disco::para() {
  d_->grabando = false;
}

int Disco::sucesos() const {
  return static_cast<int>(d_->sucesos.size());
}

void Disco::marca() {
  d_->marcas.push_back(sucesos());
}

int Disco::marcas(int corte) const {
  return static_cast<int>(
      std::count_if(d_->marcas.begin(), d_->marcas.end(), [&](int m) { return m <= corte; }));
}

void Disco::falla(Operacion operacion, int n, bool siempre) {
  d_->falla = operacion;
  d_->cuantas = 0;
  d_->cual = n;
  d_->siempre = siempre;
}

void Disco::sana() {
  d_->falla.reset();
}

bool Disco::haFallado() const {
  return d_->cuantas >= d_->cual;
}

namespace {

// The disk while it is written: what it has for certain, and what it was not yet told to make last.
class Replica {
 public:
  explicit Replica(const QMap<QString, QByteArray>& principio) {
    for (auto it = principio.cbegin(); it != principio.cend(); ++it) {
      firmes_.insert(it.key(), static_cast<int>(ficheros_.size()));
      ficheros_.push_back({it.value(), {}});
    }
    ahora_ = firmes_;
  }

  void sigue(const Suceso& s) {
    const int fichero = ahora_.value(s.fichero, -1);
    switch (s.tipo) {
      case Suceso::Crear:
        cambiaNombre(s.fichero, static_cast<int>(ficheros_.size()));
        ficheros_.push_back({});
        break;
      case Suceso::Borrar:
        cambiaNombre(s.fichero, -1);
        break;
      case Suceso::Renombrar:
        cambiaNombre(s.nuevo, fichero);
        cambiaNombre(s.fichero, -1);
        break;
      case Suceso::SincronizarCarpeta:
        firmes_ = ahora_;
        nombres_.clear();
        break;
      case Suceso::Sincronizar:
        if (fichero >= 0) asienta(at(fichero), [] { return true; });
        break;
      default:
        if (fichero >= 0) at(fichero).pendientes.push_back(&s);
    }
  }

  // What each name has when the power goes.
  QMap<QString, QByteArray> corta(Disco::Pendiente pendiente, QRandomGenerator& azar) {
    const int parte = pendiente == Disco::Pendiente::SePierde    ? 0
                      : pendiente == Disco::Pendiente::SeEscribe ? 10
                                                                 : 1 + azar.bounded(9);
    const auto llega = [&] { return azar.bounded(10) < parte; };
    for (const auto& [nombre, fichero] : nombres_) {
      // A folder writes its changes down in their order.
      if (!llega()) break;
      pon(firmes_, nombre, fichero);
    }
    QMap<QString, QByteArray> queda;
    for (auto it = firmes_.cbegin(); it != firmes_.cend(); ++it) {
      asienta(at(it.value()), llega);
      queda.insert(it.key(), at(it.value()).firme);
    }
    return queda;
  }

 private:
  struct Contenido {
    QByteArray firme;
    std::vector<const Suceso*> pendientes;
  };

  Contenido& at(int fichero) { return ficheros_[static_cast<std::size_t>(fichero)]; }

  static void pon(QMap<QString, int>& nombres, const QString& nombre, int fichero) {
    if (fichero < 0) {
      nombres.remove(nombre);
    } else {
      nombres.insert(nombre, fichero);
    }
  }
  void cambiaNombre(const QString& nombre, int fichero) {
    pon(ahora_, nombre, fichero);
    nombres_.emplace_back(nombre, fichero);
  }

  template <typename F>
  static void asienta(Contenido& contenido, const F& llega) {
    for (const Suceso* s : contenido.pendientes) {
      if (s->tipo == Suceso::Acortar) {
        if (llega()) contenido.firme.truncate(s->lugar);
        continue;
      }
      for (qint64 desde = 0; desde < s->datos.size();) {
        const qint64 hasta = std::min<qint64>(
            s->datos.size(), (s->lugar + desde) / kSector * kSector + kSector - s->lugar);
        if (llega())
          escribe(contenido.firme, s->lugar + desde,
                  QByteArrayView(s->datos).sliced(desde, hasta - desde));
        desde = hasta;
      }
    }
    contenido.pendientes.clear();
  }

  std::vector<Contenido> ficheros_;
  QMap<QString, int> firmes_, ahora_;
  std::vector<std::pair<QString, int>> nombres_;  // changes not yet synchronised
};

}  // namespace

void Disco::trasElCorte(int corte, Pendiente pendiente, QRandomGenerator& azar,
                        const QString& otra) const {
  Replica replica(d_->principio);
  for (int i = 0; i < corte; ++i) replica.sigue(d_->sucesos[static_cast<std::size_t>(i)]);
  const auto queda = replica.corta(pendiente, azar);
  QDir(otra).removeRecursively();
  QDir().mkpath(otra);
  const QString& raiz = d_->carpeta;
  for (auto it = queda.cbegin(); it != queda.cend(); ++it)
    haceFichero(otra + it.key().mid(raiz.size()), it.value());
}
