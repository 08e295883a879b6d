// The rows that a company's file begins with.
#pragma once

class Database;
struct DatosEmpresa;

// In every file, also one that will take the rows of another.
void siembraNivel01(Database& base);
void siembraNivel02(Database& base);
void siembraActPas(Database& base);

// Grids of 99 lines for the user to fill. One bad row doesn't stop the others.
void siembraConceptos(Database& base);
void siembraTiposIVA(Database& base);
void siembraTipoRecibos(Database& base);

// The subcuentas that the company's settings name. Raises 3022 when two of the first six share a
// code. The seventh, for the regularisation of stock, is written if it can be.
void siembraSubcuentasEspeciales(Database& base, int digitosCuenta, int digitosSubcuenta,
                                 const DatosEmpresa& datos);
