// A list of the plan with its search field: what is typed over the list goes to the field.
#pragma once

class DataControl;
class QKeyEvent;
class QLineEdit;

// Takes a printable key pressed on the list to the search field, which it enters as Tab does: the
// first one types over the last search. "+" and the blank are the list's own. True if it was taken.
bool llevaABusqueda(QLineEdit& busqueda, QKeyEvent& tecla);

// The arrows in the search field go from row to row of the list, no further than its ends. True if
// the key was one.
bool mueveConFlechas(DataControl& datos, const QKeyEvent& tecla);
