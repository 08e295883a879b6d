// The other fields of an entry line, besides its subcuenta: what they do is the same in every form
// that types lines of the journal. Each function wires or answers one field of `forma`.
#pragma once

#include <QString>

class ComboEnlazado;
class DataControl;
class Formulario;
class QLineEdit;
struct Contexto;

// A concept, typed or picked from the open company's (`conceptos`, which the form binds). Enter on
// a code turns it into its text and stays, so that the text can be completed; on a text it moves
// on. A code that isn't there is told and emptied.
void conectaConcepto(Formulario& forma, ComboEnlazado& concepto, DataControl& conceptos);

// Tells if a date lies before the one from which the company's lines may not be changed. By text,
// day first, as everywhere in the entry of lines. True if it does, and the message has been shown.
bool avisaDeFechaLimite(Formulario& forma, const Contexto& contexto, const QString& fecha);
// Its two halves: whether it does, or with `tambienIgual` stands on it; and the message.
bool pasaFechaLimite(const Contexto& contexto, const QString& fecha, bool tambienIgual = false);
void avisaDeFechaLimite(Formulario& forma, const Contexto& contexto);

// The calendar over a date field; `codigoLlamada` is the field's (llamada::kFecha...). The focus is
// on the field afterwards.
void eligeFecha(Formulario& forma, QLineEdit& fecha, int codigoLlamada);

// An amount that is always typed positive, because its side is told apart: digits and the decimal
// sign, with the decimal key. A key in the empty field shows the mask's zero first. `contexto` must
// outlive the form: the mask is the open company's at each key.
void conectaImporteSinSigno(Formulario& forma, const Contexto& contexto, QLineEdit& importe);

// An amount of either sign in a form that calculates: the filter, the decimal key, and on leaving
// what is no amount becomes zero and the rest is written under the company's mask. Wire what the
// form calculates after it: it then reads what stands in the field. Refuses what exigeImporte()
// does.
void conectaImporte(Formulario& forma, const Contexto& contexto, QLineEdit& importe);

// Raises 6 for an amount of 10^12 or more, with the focus back in the field that it was typed into.
void exigeImporte(Formulario& forma, QLineEdit& campo, double importe);

// The value of such a field, 0 for what is no amount; and a value written into it.
double importeDe(const QLineEdit& importe, const Contexto& contexto);
void ponImporte(QLineEdit& importe, double valor, const Contexto& contexto);
