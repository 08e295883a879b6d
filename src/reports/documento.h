// An open book: pages laid out as they are asked for, counted by a light pass, streamed for
// printing.
//
// A book shows the company's file as it is: whatever is asked of it, it looks first whether the
// file has changed since its rows were opened, and then opens them again and counts anew. Only a
// book over rows put aside stays as it is.
#pragma once

#include "engine/store.h"
#include "reports/dibujante.h"
#include "reports/grupos.h"

namespace reports {

// What a book shows, at one state of the file.
struct Contenido {
  Stamp estado;  // taken before anything was read
  DatosInforme datos;
  std::unique_ptr<Fuente> fuente;
};

class Documento {
 public:
  using Abre = std::function<Contenido()>;

  // `abre` reads the company and opens the rows; it is called again when the file has changed.
  // Raises kPlantillaDefectuosa for a column that isn't there, and what `abre` raises.
  Documento(Plantilla plantilla, Abre abre);
  // The same book over rows that were put aside.
  Documento(const Documento& otro, std::shared_ptr<const FilasFijas> filas);

  const Plantilla& plantilla() const { return plantilla_; }
  const Tipografia& tipografia() const { return tipografia_; }
  const Fuente& fuente() const { return *contenido_.fuente; }
  const DatosInforme& datos() const { return contenido_.datos; }
  const Muestra& muestra() const { return *muestra_; }

  // Brings the book up to date with its file; the version moves when there was something new.
  void alDia();
  int version() const { return version_; }

  // A page by its number from 1; null beyond the last. Counts on to it when need be, and keeps the
  // last pages asked for.
  std::shared_ptr<const Pagina> pagina(int numero);

  // The light pass: counts some more rows' pages; true once all are counted. Without an argument,
  // to the end.
  bool cuenta(qint64 filas = -1);
  bool contado() const { return contado_; }
  int paginas() const { return static_cast<int>(marcas_.size()); }  // counted so far
  // How many rows the counting has read one by one: few, where the file's sums tell the rest.
  qint64 filasLeidas() const { return cursorCuenta_ ? cursorCuenta_->leidas() : leidas_; }

 private:
  void empieza(Contenido contenido);
  void empiezaCuenta();
  bool acabaCuenta();
  std::shared_ptr<const Pagina> compon(int numero);

  Plantilla plantilla_;
  Abre abre_;  // none for a book that stays as it is
  Contenido contenido_;
  std::unique_ptr<Muestra> muestra_;
  Tipografia tipografia_;
  int version_ = 0;

  std::vector<Marca> marcas_;  // where each counted page begins
  bool contado_ = false;
  std::shared_ptr<const Grupos> grupos_;  // none where rows are counted
  bool porFilas_ = false;                 // groups and rows didn't agree
  std::unique_ptr<Cursor> cursorCuenta_;
  std::unique_ptr<Paginador> cuenta_;
  qint64 leidas_ = 0;

  std::unique_ptr<Cursor> cursorPaginas_;
  std::unique_ptr<Paginador> compone_;
  QList<std::shared_ptr<const Pagina>> recientes_;
  int totalRecientes_ = 0;  // the total that they show
};

// The pages of a book from the first on, each laid out once and kept by nobody.
class Recorrido {
 public:
  explicit Recorrido(const Documento& documento);
  // The next page, or one skipped with null; false when there was none left.
  bool siguiente(Pagina* destino);

 private:
  const Documento& documento_;
  CursorAvance cursor_;
  Paginador paginador_;
  Dibujante dibujante_;
  bool quedan_ = true;
};

// Puts a book's rows aside in slices, and begins again when the file changes meanwhile: what comes
// out is one state of it.
class Fijacion {
 public:
  explicit Fijacion(std::shared_ptr<Documento> documento) : documento_(std::move(documento)) {}
  // False once the book that stays as it is can be had. Raises what reading the rows does.
  bool paso();
  const std::shared_ptr<Documento>& fijo() const { return fijo_; }

 private:
  bool lee(qint64 filas);

  std::shared_ptr<Documento> documento_;
  std::shared_ptr<FilasFijas> filas_;
  std::unique_ptr<Lectura> lectura_;
  int version_ = -1;
  int intentos_ = 0;
  std::shared_ptr<Documento> fijo_;
};

}  // namespace reports
