#include "reports/documento.h"

namespace reports {
namespace {
constexpr qsizetype kRecientes = 8;
}

Documento::Documento(Plantilla plantilla, DatosInforme datos, std::unique_ptr<Fuente> fuente)
    : plantilla_(std::move(plantilla)),
      datos_(std::move(datos)),
      fuente_(std::move(fuente)),
      tipografia_(plantilla_.letras) {
  resuelve(plantilla_, *fuente_);
  Marca primera;
  primera.sumas.assign(plantilla_.acumuladores.size(), 0);
  marcas_.push_back(std::move(primera));
}

bool Documento::cuenta(qint64 filas) {
  if (contado_) return true;
  if (!cuenta_) {
    cursorCuenta_ = std::make_unique<CursorAvance>(*fuente_, std::vector<int>(),
                                                   columnasDeCuenta(plantilla_, *fuente_));
    cuenta_ = std::make_unique<Compositor>(plantilla_, datos_, tipografia_, *cursorCuenta_);
  }
  const qint64 hasta = cuenta_->fila() + filas;
  while (filas < 0 || cuenta_->fila() < hasta) {
    if (!cuenta_->pagina(nullptr, 0)) {
      contado_ = true;
      cuenta_.reset();
      cursorCuenta_.reset();
      break;
    }
    marcas_.push_back(cuenta_->marca());
  }
  return contado_;
}

std::shared_ptr<const Pagina> Documento::pagina(int numero) {
  while (numero > paginas() && !contado_) cuenta(1);
  if (numero < 1 || numero > paginas()) return nullptr;
  const int total = contado_ ? paginas() : 0;
  if (total != totalRecientes_) recientes_.clear();
  totalRecientes_ = total;
  for (const auto& p : recientes_) {
    if (p->numero == numero) return p;
  }
  if (!compone_) {
    cursorPaginas_ = std::make_unique<CursorSuelto>(*fuente_);
    compone_ = std::make_unique<Compositor>(plantilla_, datos_, tipografia_, *cursorPaginas_);
  }
  const auto pagina = std::make_shared<Pagina>();
  compone_->situa(marcas_[size_t(numero) - 1], numero);
  compone_->pagina(pagina.get(), total);
  recientes_.prepend(pagina);
  if (recientes_.size() > kRecientes) recientes_.removeLast();
  return pagina;
}

Recorrido::Recorrido(const Documento& documento)
    : documento_(documento),
      cursor_(documento.fuente(), columnasRetenidas(documento.plantilla())),
      compositor_(documento.plantilla(), documento.datos(), documento.tipografia(), cursor_) {}

bool Recorrido::siguiente(Pagina* destino) {
  if (!quedan_) return false;
  quedan_ = compositor_.pagina(destino, documento_.contado() ? documento_.paginas() : 0);
  return true;
}

}  // namespace reports
