// What the screens of the year-end's steps have in common.
#pragma once

#include <functional>
#include <initializer_list>

#include "journal/avance.h"

class Formulario;
class QAbstractButton;
class QLineEdit;
struct Contexto;
struct PasoAnual;

// The date of the asiento: normalised on leaving. One that lies before the date from which lines
// may be changed is told, and today takes its place; with `tambienIgual` so is that date itself.
// `contexto` must outlive the form.
void conectaFechaDeAsiento(Formulario& forma, const Contexto& contexto, QLineEdit& fecha,
                           bool tambienIgual = false);

// The fields of a step whose asiento is typed with its number.
struct AsientoAnual {
  QLineEdit& fecha;
  QLineEdit& descripcion;
  QLineEdit& asiento;
};
void conectaAsientoAnual(Formulario& forma, const Contexto& contexto, const AsientoAnual& campos);
PasoAnual pasoTecleado(const Contexto& contexto, const AsientoAnual& campos);

// A field that is completed rather than typed anew: entered, the caret stands at its end.
void conectaCompletable(Formulario& forma, QLineEdit& campo);

// Runs a step in the journal, with the bar of the main window. `botones` are disabled meanwhile.
// However it ends they are usable again and the bar is gone before any box comes up.
void trabajaPasoAnual(Contexto& contexto, std::initializer_list<QAbstractButton*> botones,
                      const std::function<void(const Avance&)>& trabajo);
