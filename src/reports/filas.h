// The rows of a book, read forward once (for PDF, exports and counting pages) or fetched by number
// (for the pages that are looked at).
#pragma once

#include <map>
#include <memory>
#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

#include "engine/dbengine.h"
#include "reports/consulta.h"

namespace reports {

class FilasFijas;

// Rows one after another.
class Lectura {
 public:
  virtual ~Lectura() = default;
  virtual bool siguiente() = 0;  // false past the last
  virtual Variant valor(int columna) const = 0;
  virtual QString texto(int columna) const = 0;  // Null reads as empty text
  virtual double numero(int columna) const = 0;  // and as 0
};

// An open source: its columns, and the names that stand for codes. Columns are numbered as the
// statement gives them, the names looked up after them.
class Fuente {
 public:
  // Raises as opening the statement does.
  Fuente(std::unique_ptr<Database> base, Consulta consulta);
  // The same source over rows that were put aside: it gives those, whatever is written meanwhile.
  Fuente(const Fuente& otra, std::shared_ptr<const FilasFijas> filas);

  int columna(const QString& nombre) const;  // -1 when there is none
  FieldType tipo(int ordinal) const;
  int columnas() const { return static_cast<int>(nombres_.size()); }
  int propias() const { return propias_; }  // columns of the statement itself
  // The name of a column, and the code's column and the value of one that is looked up.
  const QString& nombre(int ordinal) const { return nombres_[ordinal]; }
  int codigoDe(int ordinal) const { return buscas_[size_t(ordinal - propias_)].codigo; }
  Variant dato(int ordinal, const QString& codigo) const;
  // Reads the tables of names that weren't asked for yet, while the rows still are as they were.
  void leeNombres() const;

  // `solo`, unless it is empty, are the columns that will be asked for: the rows may have just
  // those, and `sitio` then tells where each column of the source stands in them.
  std::unique_ptr<Lectura> lectura(const std::vector<int>& solo = {},
                                   std::vector<int>* sitio = nullptr) const;
  std::shared_ptr<Recordset> registros() const;
  Database& base() const { return *base_; }
  const Consulta& consulta() const { return consulta_; }
  bool fija() const { return fijas_ != nullptr; }

 private:
  struct Tabla {
    int codigo;
    QString sentencia;
    QString clave;
    bool entera = false;  // all of its names have been read
    QHash<QString, Variant> datos;
  };
  void lee(Tabla& tabla) const;
  Variant leeUno(Tabla& tabla, const QString& codigo) const;

  std::shared_ptr<Database> base_;
  Consulta consulta_;
  QStringList nombres_;
  std::vector<FieldType> tipos_;
  int propias_ = 0;
  mutable std::vector<Tabla> buscas_;
  mutable std::shared_ptr<Recordset> abierta_;  // until the rows are asked for
  std::shared_ptr<const FilasFijas> fijas_;
};

// The row being laid out and the one before it.
class Cursor {
 public:
  explicit Cursor(const Fuente& fuente) : fuente_(fuente) {}
  virtual ~Cursor() = default;

  // Makes a row the current one; false past the last, whose values stay reachable as the previous
  // row's. A forward cursor only goes from each row to the next.
  virtual bool situa(qint64 fila) = 0;
  // How many rows from the current one on are laid out alike, in the same groups: a run, of which
  // only what it adds up to is known, and what decides about the first.
  virtual qint64 iguales() const { return 1; }
  // Rows that a forward cursor has read so far.
  virtual qint64 leidas() const { return 0; }

  Variant valor(int ordinal) const;
  Variant valorAnterior(int ordinal) const;
  QString texto(int ordinal) const;
  double numero(int ordinal) const;

 protected:
  virtual Variant celda(int ordinal) const = 0;
  virtual Variant celdaAnterior(int ordinal) const = 0;
  virtual QString textoCelda(int ordinal) const { return celda(ordinal).display(); }
  virtual double numeroCelda(int ordinal) const;
  const Fuente& fuente_;
};

// Reads forward without keeping rows. Of the previous row only the columns in `retiene` can be
// asked; of the current one only those in `solo`, unless it is empty.
class CursorAvance : public Cursor {
 public:
  CursorAvance(const Fuente& fuente, std::vector<int> retiene, const std::vector<int>& solo = {});
  bool situa(qint64 fila) override;
  qint64 leidas() const override { return fin_ ? fila_ : fila_ + 1; }

 protected:
  Variant celda(int ordinal) const override { return lectura_->valor(sitio(ordinal)); }
  Variant celdaAnterior(int ordinal) const override;
  QString textoCelda(int ordinal) const override { return lectura_->texto(sitio(ordinal)); }
  double numeroCelda(int ordinal) const override { return lectura_->numero(sitio(ordinal)); }

 private:
  int sitio(int ordinal) const {
    return sitios_.empty() ? ordinal : sitios_[static_cast<size_t>(ordinal)];
  }

  std::vector<int> sitios_;
  std::unique_ptr<Lectura> lectura_;
  qint64 fila_ = -1;
  bool fin_ = false;
  std::vector<int> retiene_;
  std::vector<Variant> anterior_;
};

// Any row by its number.
class CursorSuelto : public Cursor {
 public:
  explicit CursorSuelto(const Fuente& fuente) : Cursor(fuente), registros_(fuente.registros()) {}
  bool situa(qint64 fila) override {
    fila_ = static_cast<int>(fila);
    // Only the first rows are known at the opening, so that the first page is there at once.
    return fila_ < registros_->rowsKnown() || fila_ < registros_->rowTotal();
  }

 protected:
  Variant celda(int ordinal) const override { return registros_->cell(fila_, ordinal); }
  Variant celdaAnterior(int ordinal) const override { return registros_->cell(fila_ - 1, ordinal); }

 private:
  std::shared_ptr<Recordset> registros_;
  int fila_ = 0;
};

}  // namespace reports
