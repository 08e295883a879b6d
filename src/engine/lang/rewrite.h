// Makes one flat query of a tower of stored ones.
#pragma once

#include <memory>

#include "engine/lang/binder.h"

namespace lang {

// Merges the queries that `query` reads into it where that changes no row, and takes its conditions
// as far inside as they go, so that an index or a running sum can answer them.
void flatten(Query& query);

// Reads the sums that the file keeps instead of the lines, wherever a query asks a table only for
// its totals of each side by keys that such sums have.
void readRunningSums(Query& query, const Catalog& catalog, Binder& binder);

}  // namespace lang
