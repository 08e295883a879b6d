// The disk under the books as a test wants it: it notes what is written so that the power can be
// cut anywhere, and it can refuse the n-th operation.
//
// It stands between the file library and the system as the library's own layer for files, so what a
// test opens while one lives goes through it. What is opened must be closed before it goes.
//
//   Disco disco;
//   disco.graba();
//   ...                                   // work, with disco.marca() at what must not be lost
//   for (int corte = 0; corte <= disco.sucesos(); ++corte)
//     disco.trasElCorte(corte, azar, carpeta, otra);   // then look at `otra`
#pragma once

#include <memory>
#include <QRandomGenerator>
#include <QString>

class Disco {
 public:
  Disco();  // only one at a time
  ~Disco();
  Disco(const Disco&) = delete;
  Disco& operator=(const Disco&) = delete;

  // Loss of power. From graba() to para() it notes each writing, shortening, synchronisation,
  // creation, deletion and change of name under `carpeta`, which has what it held before.
  void graba(const QString& carpeta);
  void para();
  int sucesos() const;
  // Notes that what was done so far was acknowledged; the number of marks at a cut tells how much
  // of it must be found again.
  void marca();
  int marcas(int corte) const;

  // What a disk makes of what it was not yet told to synchronise.
  enum class Pendiente { SePierde, SeEscribe, AlAzar };
  // Leaves in the folder `otra` what stands on the disk when the power goes before event `corte`:
  // what was synchronised, and of the rest all, nothing, or any sectors in any order.
  void trasElCorte(int corte, Pendiente pendiente, QRandomGenerator& azar,
                   const QString& otra) const;

  // Faults. Each refuses with what a real disk answers: reading and synchronising fail, a writing
  // fails or finds the disk full, a lock is somebody else's.
  enum class Operacion { Leer, Escribir, Llenar, Sincronizar, Bloquear };
  // The n-th operation of a kind from now on fails, once or from then on; counted from 1.
  void falla(Operacion operacion, int n, bool siempre);
  void sana();
  bool haFallado() const;  // whether the fault came up since falla()

  struct Privado;

 private:
  std::unique_ptr<Privado> d_;
};
