// The register books of IVA in the common electronic format: one workbook with the sheets of issued
// and received invoices and of investment goods, from the first day of the year to the end of a
// quarter.
#pragma once

#include <vector>

#include "oficial/datosregistro.h"
#include "oficial/declarante.h"

class Database;

// Which books: those of IVA, or those that serve IVA and income tax at once (of a person).
enum class LibrosDe { Iva, Unificados };

class LibrosRegistro {
 public:
  // `trimestre` is "1T" to "4T".
  LibrosRegistro(Database& empresa, int ejercicio, const QString& trimestre);

  // In the order of each book: by date, then by code. An acquisition stands among the received
  // ones only.
  const std::vector<LineaRegistro>& expedidas() const { return expedidas_; }
  const std::vector<LineaRegistro>& recibidas() const { return recibidas_; }
  // What should be put right before: the code of the row and what is told of it.
  struct Aviso {
    QString codigo, factura, texto;
  };
  const std::vector<Aviso>& avisos() const { return avisos_; }

  // The name that the format wants: year, NIF, letter and name.
  QString nombre(const Declarante& declarante, LibrosDe libros) const;
  // Writes the workbook whole or not at all, to a system path; 75 when it can't be written.
  void escribe(const QString& ruta, const Declarante& declarante, LibrosDe libros) const;

 private:
  int ejercicio_;
  std::vector<LineaRegistro> expedidas_, recibidas_;
  std::vector<Aviso> avisos_;
};
