// Statements come from banks, by mail and by hand: whatever a file holds, it is read or told by
// line, and an account that is read without errors adds up to what its end says.
#include <cstdlib>

#include "oficial/norma43.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray fichero(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const LecturaNorma43 leido = leeNorma43(fichero);
  if (leido.cuentas.empty() && leido.errores.isEmpty()) std::abort();
  for (const auto* lista : {&leido.errores, &leido.avisos})
    for (const AvisoDeLinea& aviso : *lista)
      if (aviso.linea < 1 || aviso.texto.isEmpty()) std::abort();
  if (!leido.errores.isEmpty()) return 0;
  for (const CuentaBanco& cuenta : leido.cuentas) {
    if (cuenta.ccc.size() != 20 || !cuenta.desde.isValid() || !cuenta.hasta.isValid()) std::abort();
    for (const MovimientoBanco& m : cuenta.movimientos)
      if (!m.operacion.isValid() || !m.valor.isValid() || m.ordinal < 0) std::abort();
  }
  return 0;
}
