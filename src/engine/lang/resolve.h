// From a source to one resolved query, ready for whatever keeps the books.
#pragma once

#include <memory>

#include "engine/lang/parsed.h"
#include "engine/lang/query.h"

namespace lang {

// A source with every name looked up, the queries under it merged into it, and the kept sums read
// where they answer it. 3075 when it can't be read, 3078 for an unknown table or query, 3061 for an
// unknown column, 3464 for types that can't be compared.
std::unique_ptr<Query> resolved(const Parsed& source, const Catalog& catalog, int ano);

// Which rows of a source meet a criterion. By keys, of a source that has them, the query is those
// rows, with no output: it is read by its keys alone. Otherwise it has all rows of the source in
// their order, and one output, whether the row meets it. Raises as resolved() does.
std::unique_ptr<Query> matching(const Parsed& source, const QString& criterion, bool byKeys,
                                const Catalog& catalog, int ano);

// Whether each row is one row of one table, be it beside others that it looks up, so that rows can
// be read by its keys.
bool hasKeys(const Query& query);

}  // namespace lang
