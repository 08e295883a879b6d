#include "reports/tarea.h"

#include <climits>

namespace reports {
namespace {
constexpr qint64 kFilasPorPaso = 5000;
constexpr int kPaginasPorPaso = 8;
}  // namespace

TareaPaginas::TareaPaginas(std::shared_ptr<Documento> documento, int desde, int hasta)
    : TareaFija(std::move(documento)), desde_(desde), hasta_(hasta) {}

int TareaPaginas::total() const {
  if (!fija() || !documento().contado()) return 0;
  return std::min(hasta_, documento().paginas()) - desde_ + 1;
}

bool TareaPaginas::pasoFijo() {
  if (!documento().cuenta(kFilasPorPaso)) return true;
  if (!recorrido_) recorrido_ = std::make_unique<Recorrido>(documento());
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

// A search looks at every text of a long book: letters that can't have an accent take the short
// way.
QString llano(const QString& texto) {
  QString sin;
  sin.reserve(texto.size());
  for (const QChar c : texto) {
    if (c.unicode() < 0x80) {
      sin += c.toLower();
    } else if (c.category() != QChar::Mark_NonSpacing) {
      const QString letra = QString(c).normalized(QString::NormalizationForm_D);
      sin += QString(letra[0]).toCaseFolded();
    }
  }
  return sin;
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
    if (!llano(pagina->textos[size_t(i)].entero).contains(buscado_)) continue;
    hallado_ = Sitio{numero, i};
    return true;
  }
  return false;
}

bool TareaBusqueda::paso() {
  if (!documento_->contado()) documento_->cuenta(kFilasPorPaso);  // to tell how many there are
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
