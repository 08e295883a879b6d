// The rows of a Data control as a table for a grid. Only for the sources of Rejilla.
//
// Rows of the table are the positions of the recordset without the deleted ones; with additions
// there is one more at the end, whose texts are kept here until they are written together.
#pragma once

#include <optional>
#include <QAbstractTableModel>
#include <QPointer>
#include <utility>
#include <vector>

#include "common/errorejecucion.h"
#include "engine/datacontrol.h"
#include "toolkit/rejilla.h"

class ModeloRejilla : public QAbstractTableModel {
  Q_OBJECT
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void enlazar(DataControl& datos, std::vector<Columna> columnas);
  void setMascara(const QString& mascara) { mascara_ = mascara; }
  void setCambios(int cambios);
  DataControl* datos() const { return datos_; }
  const std::vector<Columna>& columnas() const { return columnas_; }

  // What the Data control tells is noted and taken over by ponerAlDia(): a process that moves over
  // thousands of rows must not wait for the screen.
  void anotarRefresco() { reiniciar_ = true; }
  void anotarBorrada(int posicion) { porBorrar_.push_back(posicion); }
  void ponerAlDia();

  int filas() const { return total_ - static_cast<int>(borradas_.size()); }
  int posicion(int fila) const;
  int filaDe(int posicion) const;  // of a deleted row, the one that follows it
  bool borrada(int posicion) const;
  int filaNueva() const { return cambios_ & Rejilla::Altas ? filas() : -1; }
  bool hayNueva() const { return !nueva_.isEmpty(); }
  QString textoNuevo(int columna) const { return nueva_.value(columna); }
  bool editable(int columna) const;
  int largo(int columna) const;  // characters that a column takes; 0 for no limit
  const QString& mascara(int columna) const;

  QString texto(int fila, int columna) const;
  // The same for painting: raises nothing, and gives what was read last while the file can't be
  // read. tomarSinLeer() tells whether that was so since it was asked last.
  QString textoPintado(int fila, int columna) const;
  bool tomarSinLeer() { return std::exchange(sinLeer_, false); }
  // Both note a refusal for tomarFallo() and return false.
  bool escribir(int fila, int columna, const QString& texto);
  bool guardarNueva();
  void dejarNueva();
  bool hayFallo() const { return fallo_.has_value(); }
  std::optional<ErrorEjecucion> tomarFallo();

  int rowCount(const QModelIndex& padre = {}) const override;
  int columnCount(const QModelIndex& padre = {}) const override;
  QVariant data(const QModelIndex& indice, int papel) const override;
  bool setData(const QModelIndex& indice, const QVariant& valor, int papel) override;
  QVariant headerData(int seccion, Qt::Orientation sentido, int papel) const override;
  Qt::ItemFlags flags(const QModelIndex& indice) const override;

 private:
  void reiniciar();
  QString formato(const Variant& valor, int columna) const;
  bool intentar(const std::function<void()>& cambio);

  QPointer<DataControl> datos_;
  std::vector<Columna> columnas_;
  std::vector<int> ordinales_;  // -1 for a column that the source hasn't got
  QString mascara_;
  int cambios_ = 0;
  int total_ = 0;              // positions of the recordset taken over
  std::vector<int> borradas_;  // positions, in order
  std::vector<int> porBorrar_;
  bool reiniciar_ = true;
  QHash<int, QString> nueva_;
  std::optional<ErrorEjecucion> fallo_;
  mutable bool sinLeer_ = false;  // a cell couldn't be read for painting
};
