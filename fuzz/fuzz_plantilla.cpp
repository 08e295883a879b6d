// Templates are edited by hand: whatever stands in one, it is refused with a number or fits its
// page.
#include <cstdlib>

#include "common/errorejecucion.h"
#include "reports/plantilla.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString texto =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  try {
    const reports::Plantilla p =
        reports::leePlantilla(texto, [&](const QString&) { return texto; });
    if (p.origenes.empty() || p.letras.empty() || p.anchoPapel <= 0 || p.altoPapel <= 0)
      std::abort();
    reports::cadaBanda(p, [&](const reports::Banda& b) {
      for (const reports::Campo& c : b.campos) {
        if (c.x < 0 || p.izquierda + c.x + c.ancho > p.anchoPapel + reports::unidadesDeMm(0.5) ||
            size_t(c.letra) >= p.letras.size())
          std::abort();
      }
    });
  } catch (const ErrorEjecucion&) {
  }
  return 0;
}
