#include "reports/tarea.h"

#include <climits>

namespace reports {
namespace {
constexpr qint64 kFilasPorPaso = 5000;
constexpr int kPaginasPorPaso = 8;
}  // namespace

TareaPaginas::TareaPaginas(std::shared_ptr<Documento> documento, int desde, int hasta)
    : documento_(std::move(documento)), desde_(desde), hasta_(hasta) {}

int TareaPaginas::total() const {
  return documento_->contado() ? std::min(hasta_, documento_->paginas()) - desde_ + 1 : 0;
}

bool TareaPaginas::paso() {
  if (!documento_->cuenta(kFilasPorPaso)) return true;
  if (!recorrido_) recorrido_ = std::make_unique<Recorrido>(*documento_);
  for (int i = 0; i < kPaginasPorPaso; ++i) {
    const bool muestra = ++numero_ >= desde_;
    if (numero_ > hasta_ || !recorrido_->siguiente(muestra ? &pagina_ : nullptr)) {
      acaba();
      return false;
    }
    if (muestra) pon(pagina_, numero_ == desde_);
  }
  return true;
}

QString llano(const QString& texto) {
  QString sin;
  for (const QChar c : texto.normalized(QString::NormalizationForm_D)) {
    if (c.category() != QChar::Mark_NonSpacing) sin += c;
  }
  return sin.toCaseFolded();
}

TareaBusqueda::TareaBusqueda(std::shared_ptr<Documento> documento, const QString& buscado,
                             Sitio desde)
    : documento_(std::move(documento)),
      buscado_(llano(buscado)),
      desde_(desde),
      pagina_(desde.pagina) {}

bool TareaBusqueda::busca(int numero, int desde, int hasta) {
  const auto pagina = documento_->pagina(numero);
  if (!pagina) return false;
  hasta = std::min(hasta, static_cast<int>(pagina->textos.size()));
  for (int i = desde; i < hasta; ++i) {
    if (!llano(pagina->textos[size_t(i)].texto).contains(buscado_)) continue;
    hallado_ = Sitio{numero, i};
    return true;
  }
  return false;
}

bool TareaBusqueda::paso() {
  for (int i = 0; i < kPaginasPorPaso; ++i) {
    const bool partida = pagina_ == desde_.pagina;
    const int desde = partida && !vuelta_ ? desde_.texto + 1 : 0;
    const int hasta = partida && vuelta_ ? desde_.texto + 1 : INT_MAX;
    if (busca(pagina_, desde, hasta) || (partida && vuelta_)) return false;
    ++vistas_;
    ++pagina_;
    if (documento_->contado() && pagina_ > documento_->paginas()) {
      pagina_ = 1;
      vuelta_ = true;
    }
  }
  return true;
}

}  // namespace reports
