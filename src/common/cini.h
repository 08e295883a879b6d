// The settings of the installation: a text file of sections and keys, Config.ini.
#pragma once

#include <QString>

class CIni {
 public:
  // Writes a value, leaving other keys and comments as they were. The file is made if needed and
  // replaced in one step, so an interrupted write loses nothing. A failure isn't reported: a
  // setting that couldn't be kept reads as before.
  void Grabar(const QString& Archivo, const QString& Seccion, const QString& Clave,
              const QString& Valor);

  // Reads a value, without the blanks around it and up to 254 characters. Empty when the file, the
  // section or the key isn't there. Sections and keys compare without case.
  void Leer(const QString& Archivo, const QString& Seccion, const QString& Clave, QString& Valor);
};
