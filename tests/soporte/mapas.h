// Books kept in maps: what stands behind the engine's border without a file or a disk.
//
// They answer sources of one table, with conditions on its numbers and an order. Any call across
// the border can be made to fail, so that whatever stands above it is tested under refusals.
#pragma once

#include <map>
#include <QMap>

#include "engine/store.h"

// One table's rows, each by its columns.
struct TablaDeMapas {
  using Fila = QMap<QString, Variant>;
  std::map<Key, Fila> filas;
  Key ultima = 0;
};

// What the tests do to the books, and one set of them. There is one for all locations.
struct Mapas {
  std::shared_ptr<const Definitions> definiciones = std::make_shared<Definitions>();
  std::map<QString, TablaDeMapas> tablas, antesDelGrupo;
  bool enGrupo = false;
  qint64 cambios = 0;
  std::shared_ptr<StoreSettings> ajustes;  // of the engine that has them open

  // The call number `llamada` from now on fails, and the others go on. A disk that fails (3043)
  // undoes the group; another station (3260, 3186) changes nothing.
  void niega(int llamada, int numero);
  bool negada() const { return negada_; }  // it came to that call

  // Every call across the border passes here. Another station can only be in the way of opening a
  // group (3260), of reading without one (3260) and of its commit (3186).
  enum class Paso { Leer, Abrir, Escribir, Confirmar };
  void pasa(Paso paso);
  void deshaz();

 private:
  int faltan_ = 0;
  int numero_ = 0;
  bool negada_ = false;
};

// A driver over them, for DBEngine's constructor.
std::unique_ptr<Driver> conductorDeMapas(std::shared_ptr<Mapas> mapas);
