#include "reports/widgets/impresion.h"

#include "foundation/data/errorejecucion.h"
#include "reports/errores.h"
#include "reports/pintor.h"

using namespace reports;

TareaImpresion::TareaImpresion(std::shared_ptr<Documento> documento,
                               std::unique_ptr<QPrinter> impresora, const QString& titulo,
                               int desde, int hasta)
    : TareaPaginas(std::move(documento), desde, hasta), impresora_(std::move(impresora)) {
  impresora_->setDocName(titulo);
  impresora_->setCreator(QStringLiteral("Librano"));
  impresora_->setFullPage(true);
  if (!pintor_.begin(impresora_.get())) throw ErrorEjecucion(err::kSinImpresora);
}

TareaImpresion::~TareaImpresion() {
  if (!pintor_.isActive()) return;
  impresora_->abort();
  pintor_.end();
}

void TareaImpresion::pon(const Pagina& pagina, bool primera) {
  if (!primera) impresora_->newPage();
  pintor_.save();
  const double escala = impresora_->resolution() / double(kUnidadesPorPulgada);
  pintor_.scale(escala, escala);
  pinta(pintor_, pagina, documento().tipografia());
  pintor_.restore();
}
