#include "reports/widgets/impresion.h"

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "reports/errores.h"
#include "reports/pintor.h"

using namespace reports;

TareaImpresion::TareaImpresion(std::shared_ptr<Documento> documento,
                               std::unique_ptr<QPrinter> impresora, int desde, int hasta)
    : TareaPaginas(std::move(documento), desde, hasta), impresora_(std::move(impresora)) {
  impresora_->setCreator(QStringLiteral("Librano"));
  impresora_->setFullPage(true);
  if (pintor_.begin(impresora_.get())) return;
  const QString fichero = impresora_->outputFileName();
  if (fichero.isEmpty()) throw ErrorEjecucion(err::kSinImpresora);
  throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(fichero));
}

TareaImpresion::~TareaImpresion() {
  if (!pintor_.isActive()) return;
  impresora_->abort();
  pintor_.end();
}

void TareaImpresion::pon(const Pagina& pagina, bool primera) {
  if (!primera) impresora_->newPage();
  pintor_.save();
  // On smaller paper than the book is laid out for, it is reduced as a whole: pages keep their
  // numbers.
  const Plantilla& p = documento().plantilla();
  const QRect papel = impresora_->pageLayout().fullRectPixels(impresora_->resolution());
  const double puntos = impresora_->resolution() / double(kUnidadesPorPulgada);
  const double escala = std::min(
      {puntos, double(papel.width()) / p.anchoPapel, double(papel.height()) / p.altoPapel});
  pintor_.translate(std::max(0.0, papel.width() - escala * p.anchoPapel) / 2, 0);
  pintor_.scale(escala, escala);
  pinta(pintor_, pagina, documento().tipografia());
  pintor_.restore();
}
