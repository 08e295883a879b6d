// dBASE tables written byte by byte, as the packages do whose books are brought in.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct ColumnaDbf {
  const char* nombre;
  char tipo;  // 'C', 'N', 'D', 'L'
  int ancho;
  int decimales = 0;
};

// Those of ContaPlus's journal, up to the last that is read.
const QList<ColumnaDbf>& columnasDeDiario();

class EscritorDbf {
 public:
  explicit EscritorDbf(const QList<ColumnaDbf>& columnas) : columnas_(columnas) {}

  // A record: the bytes of each cell, put where its type has them. Those not given stay blank.
  EscritorDbf& registro(const QList<QByteArray>& celdas, bool borrado = false);
  // The whole file; `marca` is that of its language, 0 for none.
  QByteArray bytes(char marca = 0) const;
  void graba(const QString& ruta, char marca = 0) const;  // makes its folder

 private:
  QList<ColumnaDbf> columnas_;
  QByteArray registros_;
  int cuantos_ = 0;
};
