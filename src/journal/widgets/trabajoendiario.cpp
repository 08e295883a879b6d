#include "journal/widgets/trabajoendiario.h"

#include "common/ignorar.h"
#include "company/indices.h"
#include "engine/dbengine.h"
#include "toolkit/contexto.h"
#include "toolkit/principal.h"
#include "toolkit/progreso.h"

void trabajaEnDiario(Contexto& contexto, const std::function<void()>& trabajo) {
  try {
    trabajo();
    // Given up, it isn't told as done.
    contexto.motor.save();
  } catch (...) {
    // The last that was given up may have been the indexes that the work had put away.
    cuidaIndices(contexto.motor, contexto.sesion.rutaEmpresa());
    // What failed is what has to be told.
    ignorando([&] { contexto.principal->diarioCambiado(); });
    throw;
  }
  contexto.principal->diarioCambiado();
}

void trabajaEnDiario(Contexto& contexto, QProgressBar& barra,
                     const std::function<void(const Avance&)>& trabajo) {
  trabajaEnDiario(contexto, [&] {
    Progreso progreso(contexto, barra);
    trabajo(progreso.avance());
    progreso.oculta();
  });
}
