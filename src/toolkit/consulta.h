// Where a dialog writes what is chosen in it: the field of the form that asked for it.
//
// The caller says which by a code of the dialog protocol; look-ups by CodigoAccion. The forms are
// reached by name, so a look-up knows none of them; a form that isn't open, or a code that isn't in
// the table, gets nothing.
#pragma once

#include <optional>
#include <QString>
#include <span>

class QWidget;
struct Contexto;

// One row of a table of such fields, by CodigoAccion or CodigoLlamada (protocolo.h).
struct DestinoConsulta {
  int codigo;
  const char* formulario;
  const char* control;
};

// The field that `codigo` stands for in the open form; null if the form isn't open.
QWidget* campoDestino(const Contexto& contexto, std::span<const DestinoConsulta> destinos,
                      int codigo);

// For subcuentas, from the plan browser.
std::span<const DestinoConsulta> destinosDeSubcuenta();
// For rates of IVA, from their table.
std::span<const DestinoConsulta> destinosDeTipoIVA();

// Writes `codigo` into the field that the session's CodigoAccion names. True if there was one.
bool entregarConsulta(Contexto& contexto, std::span<const DestinoConsulta> destinos,
                      const QString& codigo);

// What the field that the session's CodigoAccion names holds; nothing if there is none.
std::optional<QString> textoDeDestino(const Contexto& contexto,
                                      std::span<const DestinoConsulta> destinos);
