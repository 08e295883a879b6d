// Tables in which each row of another one finds a single row, as a recibo finds its customer.
#pragma once

#include "engine/lang/query.h"

namespace lang {

// The source of which each row makes at most one row of the whole FROM, since what is joined to it
// is looked up by all columns of a unique key; nullptr if there is none.
const Source* rowSource(const From& from);

// What an inner join looks up by one column: the source, that column, and the one that it is equal
// to.
struct Lookup {
  const Source* source;
  ExprPtr key;
  ExprPtr by;
};
std::vector<Lookup> innerLookups(const From& from);

// Of a query with keys, the ids of the sources that decide neither which rows there are, as far as
// each finds what it looks up, nor their order.
std::vector<int> needless(const Query& query);

}  // namespace lang
