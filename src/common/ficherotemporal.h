// A file being made beside the one that it will become.
//
// Nobody sees it under that name before it is whole and on the disk, so what was there before stays
// until then, also when the program dies. Unless it took the name it goes away with the object;
// what a program that died has left goes with the next one made for the same place.
#pragma once

#include <QString>

class FicheroTemporal {
 public:
  // `destino` is the system's path of what it will become. Nothing is made yet.
  explicit FicheroTemporal(const QString& destino);
  ~FicheroTemporal();
  FicheroTemporal(const FicheroTemporal&) = delete;
  FicheroTemporal& operator=(const FicheroTemporal&) = delete;

  QString ruta() const { return ruta_; }
  // Takes the name, in place of the file that has it, if any; false when it can't.
  bool ocupaSuSitio() const;
  // Has it, with the files that others make beside it ("-journal"), deleted.
  void borra() const;

 private:
  QString destino_;
  QString ruta_;
};
