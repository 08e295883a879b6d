// A book counted by its outermost groups instead of its rows: how many each has and what they add
// up to stands in the file's kept sums.
//
// That is enough for a group whose rows all take the same room and none of which opens an inner
// group: it is a run. The few others are read. Books of which this can't be told for certain are
// counted row by row.
#pragma once

#include <optional>
#include <span>

#include "engine/rowreader.h"
#include "reports/filas.h"
#include "reports/paginador.h"

namespace reports {

class Grupos {
 public:
  // Null for a book that has to be counted by its rows.
  static std::shared_ptr<const Grupos> de(const Plantilla& plantilla, const Fuente& fuente);

  size_t cuantos() const { return claves_.size(); }
  qint64 filas() const { return primeras_.back(); }
  // The group of a row; of its rows, the first one, and the one after the last.
  size_t grupoDe(qint64 fila) const;
  qint64 primera(size_t grupo) const { return primeras_[grupo]; }
  qint64 fin(size_t grupo) const { return primeras_[grupo + 1]; }
  const Variant& clave(size_t grupo) const { return claves_[grupo]; }
  // Whether its rows have to be read.
  bool suelto(size_t grupo) const { return sueltos_[grupo]; }
  // What its rows add up to in a column, in millionths.
  qint64 suma(size_t grupo, int ordinal) const;

  // Adds to the sums of a mark in the middle of a run what they lack, by a cursor of any row.
  void completa(const Plantilla& plantilla, Cursor& filas, Marca& marca) const;

  // What a template asks of its rows, by their columns.
  struct Planteo {
    int clave = -1;
    std::vector<int> sumadas;
    std::vector<int> internas;   // by which groups inside the outermost one are told
    std::vector<int> cabeceras;  // that decide whether a heading is put
    QString largas;              // the condition of rows that take a long line
  };
  const Planteo& planteo() const { return planteo_; }

  // The rows of some groups, in the order of the book, as Consulta::sentenciaCorta gives them.
  QString filasDe(std::span<const size_t> grupos, const std::vector<int>& solo,
                  std::vector<int>* sitio) const;

 private:
  Grupos(Planteo planteo, Consulta consulta)
      : planteo_(std::move(planteo)), consulta_(std::move(consulta)) {}
  static qint64 cuantas(Database& base, const Consulta& consulta, const QString& ademas);
  bool eligeLimites(Database& base);
  // Whether there are limits that the sums don't know of.
  bool limitada() const { return deSumas_.condiciones.size() != consulta_.condiciones.size(); }
  QString sentencia(const Consulta& consulta) const;
  bool lee(Database& base);
  bool apartaLargas(Database& base);
  bool criba(Database& base);
  bool quedaCon(const std::vector<std::pair<qint64, qint64>>& cuentas);
  void apartaPartidas(Database& base);
  void aparta(std::vector<qint64> claves);

  Planteo planteo_;
  Consulta consulta_;  // without the limits that leave nothing out
  Consulta deSumas_;   // without those either that the sums don't know of
  std::vector<Variant> claves_;
  std::vector<qint64> primeras_{0};
  std::vector<qint64> sumas_;  // by group, and in it by summed column
  std::vector<bool> sueltos_;
};

// The rows that counting goes through: runs, and one by one those of the groups apart.
class CursorDeGrupos : public Cursor {
 public:
  CursorDeGrupos(const Fuente& fuente, std::shared_ptr<const Grupos> grupos,
                 const std::vector<int>& solo);
  ~CursorDeGrupos() override;
  bool situa(qint64 fila) override;
  qint64 iguales() const override;
  qint64 leidas() const override { return leidas_; }

 protected:
  Variant celda(int ordinal) const override;
  Variant celdaAnterior(int) const override { return {}; }

 private:
  bool leeSuelto();
  void leePrimera();

  std::shared_ptr<const Grupos> grupos_;
  std::vector<int> solo_;
  size_t grupo_ = 0;
  qint64 fila_ = -1;
  std::vector<int> sitios_;
  std::unique_ptr<RowReader> sueltas_;  // of some groups apart that follow each other
  size_t tanda_ = 0;                    // the group after them
  std::vector<Variant> primera_;        // what the headings of the group look at
  qint64 leidas_ = 0;
};

// Any row by its number, of a book counted so: the rows of one group at a time are opened.
class CursorPorGrupos : public Cursor {
 public:
  CursorPorGrupos(const Fuente& fuente, std::shared_ptr<const Grupos> grupos)
      : Cursor(fuente), grupos_(std::move(grupos)) {}
  bool situa(qint64 fila) override;

 protected:
  Variant celda(int ordinal) const override { return leida(fila_, ordinal); }
  Variant celdaAnterior(int ordinal) const override { return leida(fila_ - 1, ordinal); }

 private:
  struct Abierto {
    size_t grupo = 0;
    std::shared_ptr<Recordset> filas;
  };
  Variant leida(qint64 fila, int ordinal) const;
  Recordset& abre(size_t grupo) const;

  std::shared_ptr<const Grupos> grupos_;
  qint64 fila_ = 0;
  mutable Abierto abiertos_[2];  // the latest first
};

}  // namespace reports
