// The text files of ContaNet, brought into the open company.
//
// Each is fields with commas between them, a fixed count to a record. What was written before a
// failure stays.
#pragma once

#include <optional>
#include <QString>

#include "journal/avance.h"

class Database;

namespace contanet {

// The files to be brought in, as text paths; those that aren't given stay out.
struct Ficheros {
  std::optional<QString> plan;
  std::optional<QString> diario;
  std::optional<QString> datos;  // addresses of subcuentas
  std::optional<QString> iva;
};

// The company that they go into.
struct Destino {
  int digitosCuenta = 0;
  int digitosSubcuenta = 0;
  QString mascara;
};

// Brings the files in, in the order in which they stand above. `avance` is told how far it is in
// hundredths of the whole: 25 at the plan, 50 at the journal, 75 at the addresses, 95 at the
// registers.
//
// Kept: what can't be read or written is passed over up to the end of the first record of the plan
// or of the addresses, and in the row of each invoice; anywhere else it ends the import there. So a
// first record of headings does no harm, and a file that isn't there is passed over if nothing was
// read before it. What a failing file or another station refuses is never passed over.
void importa(Database& empresa, const Ficheros& ficheros, const Destino& destino,
             const Avance& avance);

}  // namespace contanet
