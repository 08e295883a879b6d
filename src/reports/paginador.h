// Which band comes next, and where pages end.
//
// Rows go through the bands in one pass: headings of the groups that open, the line, footers of the
// groups that close, and at each page end the sums carried to the next. The state at a page's head
// is a small mark, so any page can be laid out alone once the pages before it have been counted.
// Rows that a cursor gives as a run are laid out as they would be one by one, but all at once.
// Nothing is drawn here: each band is told to a Lienzo, and counting has none.
#pragma once

#include <map>
#include <variant>

#include "reports/filas.h"
#include "reports/muestra.h"

namespace reports {

using Clave = std::variant<double, QString>;

// The line of a summary: the sums of its value, and the columns that it shows as they last stood.
struct Resumido {
  std::vector<qint64> sumas;  // by accumulator
  std::map<int, Variant> valores;
};
using Resumidos = std::map<Clave, Resumido>;

// Where a page begins: the row that is due, how far its bands were put, and the sums.
struct Marca {
  qint64 fila = 0;
  int paso = 0;
  qint64 sumadas = 0;                // rows that are in the sums: those of a run only as a whole
  std::vector<qint64> sumas;         // by accumulator, in millionths
  std::vector<Resumidos> resumidos;  // by summary
};

// What a band may show at the moment that it is put.
struct Momento {
  enum class Fila { Actual, Anterior, Ninguna };
  const Cursor& cursor;
  Fila fila;
  const std::vector<qint64>& sumas;
  const Resumido* resumido;  // of the line of a summary
  int numero;                // of the page
  bool continua;             // a heading is being repeated
  bool largo;                // the long line follows the detail
};

class Lienzo {
 public:
  virtual ~Lienzo() = default;
  // A band with its top at `y`.
  virtual void pon(const Banda& banda, int y, const Momento& momento) = 0;
};

class Paginador {
 public:
  // The columns of `plantilla` must have been resolved against the rows of `cursor`.
  Paginador(const Plantilla& plantilla, const Muestra& muestra, Cursor& cursor);

  // The state before the next page, and going to one. Only a cursor of any row can go to a page
  // other than the first.
  Marca marca() const { return {fila_, paso_, sumadas_, sumas_, resumidos_}; }
  void situa(const Marca& marca, int numeroDePagina);

  // Lays out the next page, onto `lienzo` unless it is null; false when it was the last one.
  bool pagina(Lienzo* lienzo);
  int numero() const { return numero_; }
  qint64 fila() const { return fila_; }

 private:
  struct Accion {
    enum class Tipo { Resumen, Pie, Cabecera, Detalle, PieInforme };
    Tipo tipo;
    int grupo;      // that it belongs to; kAmbitoInforme for the book
    int linea = 0;  // of the group's summaries
  };
  using Fila = Momento::Fila;

  void carga();
  Accion accion() const;
  int grupos() const { return static_cast<int>(plantilla_.grupos.size()); }
  int abiertos() const;
  int lineasDeResumen(int grupo) const;
  int altoDetalle() const;
  int limiteDetalle() const;
  qint64 seguidas() const;
  bool cabe(const Accion& a) const;
  void ejecuta(const Accion& a);
  void abrePagina();
  void cierraPagina(bool sigue);
  void pon(const Banda& banda, Fila fila, const Resumido* resumido = nullptr);
  void ponEn(const Banda& banda, int y, Fila fila, const Resumido* resumido = nullptr);
  void ponResumen(int grupo, int linea);
  bool cumple(const Banda& banda) const;
  Clave clave(int ordinal, bool numerica) const;
  void reinicia(int ambito);
  void suma(qint64 filas);

  const Plantilla& plantilla_;
  const Muestra& muestra_;
  Cursor& cursor_;
  int reserva_ = 0;  // height of all that may be carried at a page's foot
  struct Sumando {
    int ordinal;
    std::vector<size_t> acumuladores;  // of the book, the page and the groups
    std::vector<size_t> deResumen;
  };
  std::vector<Sumando> sumandos_;
  std::vector<std::vector<int>> columnasDeResumen_;

  qint64 fila_ = 0;
  qint64 sumadas_ = 0;
  int paso_ = 0;
  bool cargada_ = false;
  bool hayFila_ = false;
  bool largo_ = false;  // the row's detail takes its long line
  int cambio_ = 0;      // outermost group that changes with this row
  std::vector<Clave> claves_;
  std::vector<qint64> sumas_;
  std::vector<Resumidos> resumidos_;

  int numero_ = 0;
  int y_ = 0;
  bool puesto_ = false;    // something beside headings stands on this page
  bool continua_ = false;  // a heading is being repeated
  Lienzo* lienzo_ = nullptr;
};

// Finds the columns that a template names among those of its rows, and gives columns without a
// format the one of their type. Raises kPlantillaDefectuosa for one that isn't there.
void resuelve(Plantilla& plantilla, const Fuente& fuente);
// The columns that decide where pages end and what is carried between them: those of groups, sums,
// summaries and conditions. None when a book has none of these.
std::vector<int> columnasDeCuenta(const Plantilla& plantilla, const Fuente& fuente);
// The columns shown in bands that look back at the row before.
std::vector<int> columnasRetenidas(const Plantilla& plantilla);

}  // namespace reports
