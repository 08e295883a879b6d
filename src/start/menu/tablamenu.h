// The main menu and the tool bar, as one table of data.
//
// The main window builds its menu bar, its tool bar and its actions from here: nothing about an
// entry stands anywhere else. An entry whose form isn't registered is shown disabled, and so is a
// button that repeats it.
#pragma once

#include <QStringView>
#include <span>

enum class AccionMenu {
  Menu,      // opens a menu: the entries whose `padre` it is
  Modal,     // shows the form `destino` over the main window, with `codigoLlamada` if it isn't 0
  Sale,      // the form needs the company's file free: the main window closes first (cambiarA)
  Rutina,    // a routine of the main window, by the name of the control
  Programa,  // starts `destino` of the program folder with `argumento`
  ProgramaYTermina,  // the same, and ends the program
  Nada,              // an entry kept for later: enabled, does nothing
};

// What must hold before the entry acts.
enum class CondicionMenu {
  Ninguna,
  SubcuentaEntera,  // the entry line's TxtSubcuenta holds a whole one, which `destino` gets as its
                    // ValorElegido; otherwise `aviso` is shown
  ApunteElegido,    // the journal stands on a line; otherwise `aviso` is shown
  Aceptado,         // `aviso` is shown first and accepted
  Preguntado,       // `aviso` is asked with yes and no, and answered yes
};

// What the entries that act on a line say when the journal stands on none.
inline constexpr QStringView kSinApunte = u"Debe seleccionar un apunte de la lista de apuntes";

struct EntradaMenu {
  QStringView control = {};  // fixed name of the action or of the menu
  QStringView rotulo = {};   // caption with its mnemonic
  QStringView padre = {};    // control of the menu that holds it; empty for the menu bar itself
  AccionMenu accion = AccionMenu::Nada;
  QStringView destino = {};
  int codigoLlamada = 0;
  CondicionMenu condicion = CondicionMenu::Ninguna;
  QStringView aviso = {};
  QStringView titulo = {};  // of the notice
  QStringView argumento = {};
  QStringView atajo = {};  // shortcut as QKeySequence reads it; empty for none
  bool separa = false;     // a separator stands before it
};

// In the order of the screen; a menu always comes before what it holds.
std::span<const EntradaMenu> menuPrincipal();

// The entry of that control name, or null.
const EntradaMenu* entradaMenu(QStringView control);

// Whether an entry works on the books of the open company: those of the settings, the catalogue, a
// new company and the help do without, and so do the copies and the repair, which are for the
// company that can't be opened.
bool pideEmpresa(const EntradaMenu& entrada);

enum class SitioBoton {
  Barra,    // the tool bar
  Columna,  // the row of search buttons over the journal grid, one a column
};

struct BotonMenu {
  QStringView control = {};
  QStringView ayuda = {};  // tool-tip
  QStringView
      igualQue;  // control of the entry that it repeats; its own name for a routine of its own
  QStringView icono = {};  // resource path
  SitioBoton sitio = SitioBoton::Barra;
  QStringView rotulo = {};  // caption, for the buttons over the columns
  bool separa = false;
  QStringView atajo = {};  // for the buttons without an entry
};

// Every button repeats an entry and gives the focus back to where it was.
std::span<const BotonMenu> botonesPrincipal();
