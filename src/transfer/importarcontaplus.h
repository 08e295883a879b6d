// The books of a ContaPlus installation, brought into the open company.
//
// It keeps a folder for each company ("EMP01", "EMP02"...) beside its program, and one ("EMP") for
// the list of them; each table is a dBASE file. What was written before a failure stays, and the
// failure tells the record that it lies in.
#pragma once

#include <QString>
#include <QStringList>

#include "journal/avance.h"

class Database;

namespace contaplus {

// The folder of a company, told by the path of the program, of whose name only the length counts,
// and by the first two characters of the company as `empresas` gives it; without one, the folder of
// the list. 5 for a path shorter than that name.
//   carpeta("C:\\Contaplus\\Contaplw.exe", "01 - Sociedad") == "C:\\Contaplus\\EMP01"
QString carpeta(const QString& programa, const QString& empresa);

// The companies of an installation, each as its code, " - " and its name, in the order of their
// table. What TablaDbf raises.
QStringList empresas(const QString& programa);

// Adds the subcuentas of the plan that the company hasn't got. 3163 for a code wider than the
// company's.
void importaPlan(Database& empresa, const QString& carpeta, int digitosCuenta,
                 const Avance& avance);

// Adds all lines of the journal in the order of their file, under numbers of our own. The next
// asiento is the one after the last line's.
void importaDiario(Database& empresa, const QString& carpeta, const Avance& avance);

// Adds a row of the register for each line that is of an invoice, base and type alone, and has all
// lines of its asiento point to it.
void importaIVA(Database& empresa, const QString& carpeta, const Avance& avance);

}  // namespace contaplus
