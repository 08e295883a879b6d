// What the screens that take the main window's place have in common: they work on a file that
// nothing else has open, and bring the window back.
#pragma once

#include <functional>

#include "engine/advance.h"

class Formulario;
class QLabel;
class QProgressBar;
class QString;
struct Contexto;

// Shows the main window in the place of the open form, on the company that the session names.
void vuelveAlMenu(const Contexto& contexto);

// Shows a text that is told once the form is on show, and makes room for all of its lines.
void diceEntero(QLabel& rotulo, const QString& texto);

// Runs work on whole files with a bar that hides at its end, once nothing is pending on any file
// (3059 when the user gives up what is).
void trabajaConFichero(Formulario& forma, Contexto& contexto, QProgressBar& barra,
                       const std::function<void(const Advance&)>& trabajo);
