// Lays rows out into pages.
//
// Rows go through the bands in one pass: headings of the groups that open, the line, footers of the
// groups that close, and at each page end the sums carried to the next. The state at a page's head
// is a small mark, so any page can be laid out alone once the pages before it have been counted.
#pragma once

#include <QDate>

#include "reports/filas.h"
#include "reports/tipografia.h"

namespace reports {

// A text on a page, for searching.
struct Texto {
  QString texto;
  int x = 0, y = 0, ancho = 0, alto = 0;
};

struct Pagina {
  int numero = 0;
  std::vector<Mancha> manchas;
  std::vector<Tramo> tramos;  // by font
  std::vector<Texto> textos;
};

// What every heading shows of the company and of the run.
struct DatosInforme {
  QHash<QString, QString> textos;  // "empresa", "nif", "año", "limites", "hoy"...
  QString mascara;
};

// Where a page begins: the row that is due, how far its bands were put, and the sums.
struct Marca {
  qint64 fila = 0;
  int paso = 0;
  std::vector<long double> sumas;
};

class Compositor {
 public:
  // The columns of `plantilla` must have been resolved against the rows of `cursor`.
  Compositor(const Plantilla& plantilla, const DatosInforme& datos, const Tipografia& tipografia,
             Cursor& cursor);

  // The state before the next page, and going to one. Only a cursor of any row can go to a page
  // other than the first.
  Marca marca() const { return {fila_, paso_, sumas_}; }
  void situa(const Marca& marca, int numeroDePagina);

  // Lays out the next page, into `destino` unless it is null; false when it was the last one.
  // `paginas` is the total, 0 while it isn't known.
  bool pagina(Pagina* destino, int paginas);
  int numero() const { return numero_; }
  qint64 fila() const { return fila_; }

 private:
  struct Accion {
    enum class Tipo { Pie, Cabecera, Detalle, PieInforme };
    Tipo tipo;
    int grupo;
  };
  enum class Fila { Actual, Anterior };
  using Clave = std::variant<double, QString>;

  void carga();
  Accion accion() const;
  int grupos() const { return static_cast<int>(plantilla_.grupos.size()); }
  int abiertos() const;
  bool cabe(const Accion& a) const;
  void ejecuta(const Accion& a);
  void abrePagina();
  void cierraPagina(bool sigue);
  void pon(const Banda& banda, Fila fila);
  void ponEn(const Banda& banda, int y, Fila fila);
  void ponCampo(const Campo& campo, int y, Fila fila);
  QString contenido(const Pieza& pieza, Fila fila) const;
  QString formatea(const Variant& valor, Formato formato) const;
  QString importe(double valor, Formato formato) const;
  Clave clave(int grupo) const;
  void reinicia(int ambito);
  void suma();

  const Plantilla& plantilla_;
  const DatosInforme& datos_;
  const Tipografia& tipografia_;
  Cursor& cursor_;
  QString cero_;     // how zero is shown
  int reserva_ = 0;  // height of all that may be carried at a page's foot
  struct Sumando {
    int ordinal;
    std::vector<size_t> acumuladores;
  };
  std::vector<Sumando> sumandos_;

  qint64 fila_ = 0;
  int paso_ = 0;
  bool cargada_ = false;
  bool hayFila_ = false;
  int cambio_ = 0;  // outermost group that changes with this row
  std::vector<Clave> claves_;
  std::vector<long double> sumas_;  // in millionths, whole numbers: no order of adding changes them

  int numero_ = 0;
  int paginas_ = 0;
  int y_ = 0;
  bool puesto_ = false;    // something beside headings stands on this page
  bool continua_ = false;  // a heading is being repeated
  Pagina* destino_ = nullptr;
};

// Finds the columns that a template names among those of its rows, and gives columns without a
// format the one of their type. Raises kPlantillaDefectuosa for one that isn't there.
void resuelve(Plantilla& plantilla, const Fuente& fuente);
// The columns that decide where pages end and what is carried between them: those of groups and
// sums. None when a book has neither.
std::vector<int> columnasDeCuenta(const Plantilla& plantilla, const Fuente& fuente);
// The columns shown in bands that look back at the row before.
std::vector<int> columnasRetenidas(const Plantilla& plantilla);

}  // namespace reports
