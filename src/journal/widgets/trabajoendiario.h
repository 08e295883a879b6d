// The tools that change many lines of the journal, as every dialog runs them.
#pragma once

#include <functional>

#include "journal/avance.h"

struct Contexto;
class QProgressBar;

// Runs `trabajo` and saves it: if another station is in the way the user chooses, and 3059 is
// raised when he gives it up. However it ends, the main window shows what is in the file. A failure
// goes on to the caller.
void trabajaEnDiario(Contexto& contexto, const std::function<void()>& trabajo);

// The same for a long one, which tells how far it is: the bar moves meanwhile and other input is
// refused. The bar hides at the end, and stays where it was if the work fails.
//
//   trabajaEnDiario(ctx, *ui->Bar, [&](const Avance& avance) { renumera(*empresa, 1, avance); });
void trabajaEnDiario(Contexto& contexto, QProgressBar& barra,
                     const std::function<void(const Avance&)>& trabajo);
