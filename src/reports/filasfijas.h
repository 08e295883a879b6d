// Rows put aside in a file of their own while a book is printed or exported, so that it comes from
// one state of the books however long it takes, and nobody who posts has to wait for it.
#pragma once

#include <QDataStream>
#include <QTemporaryFile>

#include "reports/filas.h"

namespace reports {

class FilasFijas : public std::enable_shared_from_this<FilasFijas> {
 public:
  // Raises 75 when there is no room for temporary files.
  explicit FilasFijas(int columnas);

  // Adds the row on which a reading stands. Raises 3026 when the disk is full.
  void pon(const Lectura& fila);
  // To be called after the last one.
  void acaba();

  // The rows from the first on. Several readings may be under way.
  std::unique_ptr<Lectura> lectura() const;
  int columnas() const { return columnas_; }
  qint64 filas() const { return filas_; }

 private:
  int columnas_;
  qint64 filas_ = 0;
  QTemporaryFile fichero_;
  QDataStream salida_;
};

}  // namespace reports
