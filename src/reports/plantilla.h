// The layout of a book, as a text file that the office may edit: paper, the rows it reads, the
// bands of a page and what stands in them. docs/impresos.md tells the format.
//
// Lengths are in units of a twentieth of a point, the grid on which every glyph is placed: so a
// page is the same on screen, on paper and in a PDF.
#pragma once

#include <functional>
#include <optional>
#include <QString>
#include <QStringList>
#include <vector>

namespace reports {

inline constexpr int kUnidadesPorPulgada = 1440;
int unidadesDeMm(double mm);

// How a value is shown. Credits are stored negative and shown without their minus.
enum class Formato {
  Natural,  // by the type of the column: dates, amounts, whole numbers, text
  Texto,
  Entero,
  Fecha,
  Importe,   // by the company's mask
  Negado,    // the same with its sign turned
  Debe,      // Importe; blank for zero
  Haber,     // Negado; blank for zero
  Deudor,    // Importe of a positive balance; blank for others
  Acreedor,  // Negado of a negative balance; blank for others
};

bool esDeImporte(Formato formato);
// The number that a format of amounts shows for a value, with its sign turned for credits; none
// when the cell stays blank.
std::optional<double> importeMostrado(double valor, Formato formato);

// A part of what a field shows.
struct Pieza {
  enum class Clase { Literal, Columna, Suma, Dato };
  Clase clase = Clase::Literal;
  QString texto;  // the literal, the column, or the name of the datum ("pagina", "empresa"...)
  int acumulador = -1;  // of a sum
  int ordinal = -1;     // of the column in the open rows
  Formato formato = Formato::Natural;
};

struct Letra {
  QString familia;
  double puntos = 8;
  bool negrita = false;
  bool cursiva = false;
  bool operator==(const Letra&) const = default;
};

enum class Alineacion { Izquierda, Centro, Derecha };

struct Campo {
  int x = 0;
  int ancho = 0;
  int y = 0;
  Alineacion alineacion = Alineacion::Izquierda;
  int letra = 0;  // index in Plantilla::letras
  // The words that fit, when the long line follows: it shows the others as {resto}.
  bool parte = false;
  std::vector<Pieza> piezas;
};

// A line or a shaded box.
struct Mancha {
  int x = 0;
  int ancho = 0;
  int y = 0;
  int alto = 0;
  int gris = 0;  // 0 black, 100 white
};

struct Banda {
  int alto = 0;
  QString si;    // put only where this column of the row isn't empty or zero
  int pasa = 0;  // or, where told, is greater than this
  int ordinalSi = -1;
  bool siNumerica = false;
  std::vector<Campo> campos;
  std::vector<Mancha> manchas;
};

// Rows that follow each other with the same value of a column. `sigue` and `anterior` stand at the
// foot of a page that ends inside the group and at the head of the next.
struct Grupo {
  QString nombre;
  QString columna;
  int ordinal = -1;
  bool numerica = false;
  bool repite = false;  // its heading again after a page break
  bool salto = false;   // each on a new page
  int junto = 1;        // rows that must fit under its heading
  Banda cabecera, pie, sigue, anterior;
};

// Totals by the values of a column, whatever the order of the rows: one line for each value, in
// their order, at the end of the book or of each group.
struct Resumen {
  QString nombre;
  QString columna;
  int ordinal = -1;
  bool numerica = false;
  int de = -1;  // kAmbitoInforme, or the group that it closes
  Banda cabecera, linea, pie;
};

inline constexpr int kAmbitoInforme = -1;
inline constexpr int kAmbitoPagina = -2;

// A sum kept while rows are laid out: of the whole book, of the page, or of a group by its index.
struct Acumulador {
  QString columna;
  int ambito = kAmbitoInforme;
  int ordinal = -1;
  bool operator==(const Acumulador&) const = default;
};
// The sums of the line of a summary: counted down from here, by the summary's place.
inline constexpr int kAmbitoResumen = -10;

// What stands for a code, read from a table of names or a query: `columna` := `dato`, an expression
// over the columns of `tabla`, where `clave` is the row's `codigo`; Null where there is none.
struct Busca {
  QString columna, codigo, tabla, clave, dato;
};

// A field of the selection as the statement knows it.
struct Equivalencia {
  QString nombre;  // "Tabla.Campo", or "Mes" for {@Mes}
  QString expresion;
};

// Where rows come from. A template may have several: the selection names the one it is for.
struct Origen {
  QStringList tablas;
  QString columnas, desde, donde, agrupado, orden;
  QString nota;  // what its readers must know of these rows, for {nota}
  std::vector<Equivalencia> campos;
  std::vector<Equivalencia> formulas;
  std::vector<Busca> buscas;
};

// A column of the spreadsheet that the rows are exported to.
struct ColumnaHoja {
  QString titulo;
  QString columna;
  Formato formato = Formato::Natural;
  double ancho = 0;  // in characters
  int ordinal = -1;
};

struct Plantilla {
  QString titulo;
  int anchoPapel = 0, altoPapel = 0;
  int izquierda = 0, arriba = 0, derecha = 0, abajo = 0;  // margins
  int ancho = 0;  // that the bands are drawn for; 0 for what the paper leaves
  QStringList parametros;
  std::vector<Letra> letras;
  std::vector<Origen> origenes;
  std::vector<Grupo> grupos;  // from the outermost inwards
  std::vector<Resumen> resumenes;
  std::vector<Acumulador> acumuladores;
  Banda cabeceraInforme, pieInforme, cabeceraPagina, piePagina, detalle;
  Banda detalleLargo;  // a second line under the detail
  Banda sigueInforme, anteriorInforme;
  Banda vacio;  // in place of the rows when there are none
  std::vector<ColumnaHoja> hoja;
};

// Gives each band of a template to `haz`.
template <class P, class F>
void cadaBanda(P& p, F haz) {
  for (auto* b : {&p.cabeceraInforme, &p.pieInforme, &p.cabeceraPagina, &p.piePagina, &p.detalle,
                  &p.detalleLargo, &p.sigueInforme, &p.anteriorInforme, &p.vacio}) {
    haz(*b);
  }
  for (auto& g : p.grupos) {
    for (auto* b : {&g.cabecera, &g.pie, &g.sigue, &g.anterior}) haz(*b);
  }
  for (auto& r : p.resumenes) {
    for (auto* b : {&r.cabecera, &r.linea, &r.pie}) haz(*b);
  }
}

// Reads a template. `incluido` gives the text of another file of the same folder, named by an
// `incluye` line. Raises kPlantillaDefectuosa with the line and what is wrong in it.
using LeeIncluido = std::function<QString(const QString& nombre)>;
Plantilla leePlantilla(const QString& texto, const LeeIncluido& incluido);

// The template in a file, given as the program writes paths. 53 when it isn't there.
Plantilla abrePlantilla(const QString& ruta);

}  // namespace reports
