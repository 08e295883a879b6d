// What is done with an error that nobody handles: a line in the error log and a box.
#pragma once

#include <QString>

class ErrorEjecucion;
class QWidget;
struct Contexto;

struct Fallo {
  Fallo(int numero, const QString& descripcion, const QString& lugar);
  Fallo(const ErrorEjecucion& error, const QString& lugar);

  int numero;
  QString descripcion;
  QString lugar;  // "CmdAceptar_Click - FrmEmpresas", as the log names it
};

// Writes the line in the error log; a log that can't be written hides nothing.
void anota(const Contexto& contexto, const Fallo& fallo);
// The line and a box over `padre`, by itself "Error 3022: ..." titled "Librano". What the user has
// cancelled himself (3059) needs no box. Raises nothing.
void avisa(const Contexto& contexto, QWidget* padre, const Fallo& fallo, const QString& texto = {},
           const QString& titulo = {});
