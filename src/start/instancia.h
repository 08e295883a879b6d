// One copy of the program on a machine.
#pragma once

#include <QString>

// A mark of the machine, kept by the system for as long as the process lives: a copy that crashed
// or was killed leaves nothing behind that could block the next start.
class Instancia {
 public:
  // `nombre` tells programs apart.
  explicit Instancia(const QString& nombre);
  ~Instancia();
  Instancia(const Instancia&) = delete;
  Instancia& operator=(const Instancia&) = delete;

  // False when another copy held the mark at construction. Where the system has no such mark, every
  // copy counts as the only one: better two copies than none.
  bool unica() const { return unica_; }

 private:
  int marca_ = -1;
  bool unica_ = true;
};
