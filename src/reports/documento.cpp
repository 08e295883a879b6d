#include "reports/documento.h"

#include "reports/filasfijas.h"

namespace reports {
namespace {
constexpr qsizetype kRecientes = 8;
constexpr qint64 kFilasPorPaso = 5000;
constexpr qint64 kFilasPorSalto = 200;
constexpr int kIntentos = 3;
}  // namespace

Documento::Documento(Plantilla plantilla, Abre abre)
    : plantilla_(std::move(plantilla)), abre_(std::move(abre)), tipografia_(plantilla_.letras) {
  empieza(abre_());
}

Documento::Documento(const Documento& otro, std::shared_ptr<const FilasFijas> filas)
    : plantilla_(otro.plantilla_), tipografia_(plantilla_.letras) {
  empieza({otro.contenido_.estado, otro.datos(),
           std::make_unique<Fuente>(otro.fuente(), std::move(filas))});
}

void Documento::empieza(Contenido contenido) {
  resuelve(plantilla_, *contenido.fuente);
  cuenta_.reset();
  cursorCuenta_.reset();
  compone_.reset();
  cursorPaginas_.reset();
  grupos_.reset();
  porFilas_ = false;
  recientes_.clear();
  contenido_ = std::move(contenido);
  muestra_ = std::make_unique<Muestra>(contenido_.datos.mascara);
  contado_ = false;
  marcas_.clear();
  Marca primera;
  primera.sumas.assign(plantilla_.acumuladores.size(), 0);
  marcas_.push_back(std::move(primera));
}

void Documento::alDia() {
  if (!abre_ || fuente().base().state() == contenido_.estado) return;
  empieza(abre_());
  ++version_;
}

void Documento::empiezaCuenta() {
  const std::vector<int> columnas = columnasDeCuenta(plantilla_, fuente());
  if (!porFilas_) grupos_ = Grupos::de(plantilla_, fuente());
  if (grupos_) {
    cursorCuenta_ = std::make_unique<CursorDeGrupos>(fuente(), grupos_, columnas);
    compone_.reset();
    cursorPaginas_.reset();
  } else {
    cursorCuenta_ = std::make_unique<CursorAvance>(fuente(), std::vector<int>(), columnas);
  }
  cuenta_ = std::make_unique<Paginador>(plantilla_, *muestra_, *cursorCuenta_);
}

// False where the groups told of rows that aren't there: they are counted one by one then.
bool Documento::acabaCuenta() {
  contado_ = !grupos_ || cuenta_->fila() == grupos_->filas();
  leidas_ = cursorCuenta_->leidas();
  cuenta_.reset();
  cursorCuenta_.reset();
  if (contado_) return true;
  porFilas_ = true;
  grupos_.reset();
  compone_.reset();
  cursorPaginas_.reset();
  marcas_.resize(1);
  return false;
}

bool Documento::cuenta(qint64 filas) {
  alDia();
  if (contado_) return true;
  if (!cuenta_) empiezaCuenta();
  const qint64 hasta = cuenta_->fila() + filas;
  while (filas < 0 || cuenta_->fila() < hasta) {
    if (!cuenta_->pagina(nullptr)) return acabaCuenta() || cuenta(filas);
    marcas_.push_back(cuenta_->marca());
  }
  return false;
}

std::shared_ptr<const Pagina> Documento::pagina(int numero) {
  std::shared_ptr<const Pagina> pagina;
  for (int intento = 0; intento < kIntentos; ++intento) {
    alDia();
    const int version = version_;
    pagina = compon(numero);
    alDia();  // while its rows were read, too
    if (version == version_) break;
  }
  return pagina;
}

std::shared_ptr<const Pagina> Documento::compon(int numero) {
  while (numero > paginas() && !contado_) cuenta(kFilasPorSalto);
  if (numero < 1 || numero > paginas()) return nullptr;
  const int total = contado_ ? paginas() : 0;
  if (total != totalRecientes_) recientes_.clear();
  totalRecientes_ = total;
  for (const auto& p : recientes_) {
    if (p->numero == numero) return p;
  }
  if (!compone_) {
    if (grupos_) {
      cursorPaginas_ = std::make_unique<CursorPorGrupos>(fuente(), grupos_);
    } else {
      cursorPaginas_ = std::make_unique<CursorSuelto>(fuente());
    }
    compone_ = std::make_unique<Paginador>(plantilla_, *muestra_, *cursorPaginas_);
  }
  const auto pagina = std::make_shared<Pagina>();
  Dibujante dibujante(plantilla_, datos(), *muestra_, tipografia_);
  dibujante.empieza(*pagina, numero, total);
  Marca& marca = marcas_[size_t(numero) - 1];
  if (grupos_) grupos_->completa(plantilla_, *cursorPaginas_, marca);
  compone_->situa(marca, numero);
  compone_->pagina(&dibujante);
  recientes_.prepend(pagina);
  if (recientes_.size() > kRecientes) recientes_.removeLast();
  return pagina;
}

Recorrido::Recorrido(const Documento& documento)
    : documento_(documento),
      cursor_(documento.fuente(), columnasRetenidas(documento.plantilla())),
      paginador_(documento.plantilla(), documento.muestra(), cursor_),
      dibujante_(documento.plantilla(), documento.datos(), documento.muestra(),
                 documento.tipografia()) {}

bool Recorrido::siguiente(Pagina* destino) {
  if (!quedan_) return false;
  if (destino) {
    dibujante_.empieza(*destino, paginador_.numero() + 1,
                       documento_.contado() ? documento_.paginas() : 0);
  }
  quedan_ = paginador_.pagina(destino ? &dibujante_ : nullptr);
  return true;
}

bool Fijacion::lee(qint64 filas) {
  for (qint64 i = 0; filas < 0 || i < filas; ++i) {
    if (!lectura_->siguiente()) return false;
    filas_->pon(*lectura_);
  }
  return true;
}

bool Fijacion::paso() {
  if (fijo_) return false;
  documento_->alDia();
  if (!lectura_ || documento_->version() != version_) {
    version_ = documento_->version();
    filas_ = std::make_shared<FilasFijas>(documento_->fuente().propias());
    lectura_ = documento_->fuente().lectura();
    ++intentos_;
  }
  // Where others write all the time, in the end they have to wait for the reading of the rows.
  std::unique_ptr<Hold> cierre;
  if (intentos_ > kIntentos) {
    cierre = documento_->fuente().base().hold();
    documento_->alDia();
    if (documento_->version() != version_) return true;
  }
  if (lee(cierre ? -1 : kFilasPorPaso)) return true;
  documento_->fuente().leeNombres();
  documento_->alDia();
  if (documento_->version() != version_) return true;
  filas_->acaba();
  fijo_ = std::make_shared<Documento>(*documento_, filas_);
  lectura_.reset();
  return false;
}

}  // namespace reports
