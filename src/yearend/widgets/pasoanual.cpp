#include "yearend/widgets/pasoanual.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QProgressBar>

#include "common/formato.h"
#include "journal/apunte.h"
#include "journal/widgets/lineaapunte.h"
#include "journal/widgets/trabajoendiario.h"
#include "toolkit/formulario.h"
#include "toolkit/principal.h"
#include "yearend/ejercicio.h"

void conectaFechaDeAsiento(Formulario& forma, const Contexto& contexto, QLineEdit& fecha,
                           bool tambienIgual) {
  forma.fecha(&fecha);
  forma.alSalir(&fecha, [&forma, &contexto, &fecha, tambienIgual] {
    const QString escrita = fecha.text();
    if (!pasaFechaLimite(contexto, escrita, tambienIgual)) return;
    fecha.setText(Format(contexto.reloj->hoy(), QStringLiteral("dd/mm/yyyy")));
    avisaDeFechaLimite(forma, contexto);
  });
}

void conectaAsientoAnual(Formulario& forma, const Contexto& contexto, const AsientoAnual& campos) {
  conectaFechaDeAsiento(forma, contexto, campos.fecha);
  campos.descripcion.setMaxLength(kLargoDeDescripcion);
  forma.soloNumero(&campos.asiento);
}

PasoAnual pasoTecleado(const Contexto& contexto, const AsientoAnual& campos) {
  return {.asiento = campos.asiento.text(),
          .fecha = campos.fecha.text(),
          .descripcion = campos.descripcion.text(),
          .mascara = contexto.sesion.MascaraImporte};
}

void conectaCompletable(Formulario& forma, QLineEdit& campo) {
  forma.sinSeleccion(&campo);
  forma.alEntrar(&campo, [&campo] { campo.end(false); });
}

void trabajaPasoAnual(Contexto& contexto, std::initializer_list<QAbstractButton*> botones,
                      const std::function<void(const Avance&)>& trabajo) {
  QProgressBar& barra = contexto.principal->Bar();
  const auto termina = [&] {
    barra.hide();
    for (QAbstractButton* boton : botones) boton->setEnabled(true);
  };
  for (QAbstractButton* boton : botones) boton->setEnabled(false);
  try {
    trabajaEnDiario(contexto, barra, trabajo);
  } catch (...) {
    termina();
    throw;
  }
  termina();
}
