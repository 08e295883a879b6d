// Books typed into the entry line of the main window, key by key, as a bookkeeper does.
#pragma once

#include <functional>
#include <QString>

class Formulario;
class Guion;
class Teclado;
struct Contexto;
struct Sesion;

// A line as it stands on paper. One of the two amounts is empty.
struct LineaDiario {
  QString Asiento;
  QString Fecha;  // dd/mm/yyyy
  QString Subcuenta;
  QString Concepto;
  QString Debe;
  QString Haber;
};

// Types one line from where the last one left the focus, TxtSubcuenta: a new asiento goes back to
// TxtAsiento, takes the next number with "*" and gives the date as four digits. The question that
// comes when the line before was one of IVA is answered No.
void tecleaLinea(Teclado& teclado, Guion& guion, const Sesion& sesion, const LineaDiario& linea,
                 bool nuevoAsiento);

// What a new user does: the start form, the first installation, a company of 3 and 8 digits with
// the defaults of its screen and the standing plan, and into the main window, which is returned.
// The folder must be empty. `mirar` is shown each form on the way, ready for a picture; `plan` are
// the letters that choose another plan.
Formulario& empiezaEmpresa(Contexto& ctx, Guion& guion, const QString& empresa,
                           const std::function<void(Formulario&)>& mirar = {},
                           const QString& plan = {});

// In the dialog of a new company: its name, and the plan asked for, which `plan` then creates.
void tecleaEmpresa(Teclado& alta, Guion& guion, const QString& empresa,
                   const std::function<void(Teclado&)>& plan);

// Fills the dialog of a new subcuenta, whose code stands there already, and accepts it.
void tecleaNombre(Teclado& alta, const QString& nombre);
// Creates a subcuenta from TxtSubcuenta of the main window: its code with a dot for the zeros, Yes
// to the offer to create it, and its name in the dialog. The focus stays where it was.
void tecleaSubcuenta(Teclado& menu, Guion& guion, const QString& codigo, const QString& nombre);
// Types the whole quarter into the main window; `tras` runs after each line.
void tecleaTrimestre(Contexto& ctx, Guion& guion, Formulario& menu,
                     const std::function<void(const LineaDiario&)>& tras = {});
