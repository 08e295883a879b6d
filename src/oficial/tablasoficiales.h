// The tables that the law of today wants beside a company's own.
//
// They stand in the company's file and are made when something is first written to them, so a file
// of an earlier version gets them too, and one that never needs them never has them.
#pragma once

#include <memory>
#include <span>

#include "company/tablas.h"
#include "engine/dbengine.h"

// All of them, whether a file has them or not. A column as wide as the company's codes holds one,
// and follows when the codes of the plan change.
std::span<const TablaDeEmpresa> tablasOficiales();

bool tieneTablaOficial(const Database& empresa, const QString& nombre);

// Makes the table if the file lacks it, codes as wide as in the company's plan. Another station
// that makes it at the same time is no failure. 3265 for a name that isn't among them.
void aseguraTablaOficial(Database& empresa, const QString& nombre);

// A statement over one of them, for what only reads: null in a file that hasn't got the table yet,
// which is then the same as an empty one.
//   leeTablaOficial(empresa, "PlanOficial", "Select * from PlanOficial")
std::unique_ptr<Recordset> leeTablaOficial(Database& empresa, const QString& nombre,
                                           const QString& sentencia);
