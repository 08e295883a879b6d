// What every form is handed: the session and the services of the house. There is no global one.
#pragma once

#include <functional>
#include <QString>

#include "common/reloj.h"
#include "common/sesion.h"

class Cajas;
class DBEngine;
class Principal;
class Registro;

struct Contexto {
  explicit Contexto(DBEngine& motorDeDatos) : motor(motorDeDatos) {}

  Sesion sesion;
  DBEngine& motor;
  const Reloj* reloj = nullptr;
  Cajas* cajas = nullptr;
  Registro* formularios = nullptr;
  // The folder of the running program as the program writes it, with its final backslash:
  // Config.ini, Errores.txt and the catalogue of a first start stand there whatever the settings
  // say.
  QString carpetaPrograma;
  Principal* principal = nullptr;  // the open main window; null before it is shown
  // Starts an external program by its text path; raises 53 when it can't be started.
  std::function<void(const QString& programa, const QStringList& argumentos)> ejecutar;
  // False while another copy of the program runs on this machine; null counts as true.
  std::function<bool()> copiaUnica;
  // Ends the program at once: everything is already in the files.
  std::function<void()> terminar;
};
