// The tables of a company's file.
//
// Much of the program reads fields by ordinal, so the order of the fields is part of the books.
#pragma once

#include <QStringList>

#include "engine/dbengine.h"

// The twelve tables in order of creation.
QStringList nombresDeTablas();

// The definition of one, with its primary index if it has one. The code columns take the company's
// widths. Raises 3265 for another name.
TableDef definicionDeTabla(const QString& nombre, int digitosCuenta, int digitosSubcuenta);
