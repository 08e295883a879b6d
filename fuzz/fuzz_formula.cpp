// Selections hold what users type into boxes: whatever it is, it is refused with a number or
// becomes a condition in which every text and name is closed.
#include <cstdlib>

#include "common/errorejecucion.h"
#include "reports/formula.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QString texto =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  for (const auto clase : {Formula::Clase::Lineas, Formula::Clase::Grupos}) {
    try {
      const QString condicion =
          Formula(texto, clase).condicion([](const Formula::Referencia& c, bool) {
            return u'[' + c.tabla + u'.' + c.campo + u']';
          });
      bool dentro = false, nombre = false;
      int hondura = 0;
      for (const QChar c : condicion) {
        if (c == u'\'' && !nombre) dentro = !dentro;
        if (dentro) continue;
        if (c == u'[' || c == u']') {
          if (nombre == (c == u'[')) std::abort();
          nombre = c == u'[';
        }
        if (nombre) continue;
        if (c == u'(') ++hondura;
        if (c == u')' && --hondura < 0) std::abort();
        if (c == u';') std::abort();
      }
      if (dentro || nombre || hondura != 0) std::abort();
    } catch (const ErrorEjecucion&) {
    }
  }
  return 0;
}
