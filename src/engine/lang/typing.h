// What the operators and functions of the language accept, and the type of what they give.
#pragma once

#include "engine/lang/query.h"

namespace lang {

// 3464 for values that can't be compared: a text with a number or date that it isn't. A text
// literal beside a number is read as one.
ExprPtr comparison(Op op, ExprPtr left, ExprPtr right);
ExprPtr between(const ExprPtr& value, const ExprPtr& low, const ExprPtr& high);
ExprPtr inList(std::vector<ExprPtr> valueAndList);
ExprPtr like(ExprPtr value, ExprPtr pattern);
ExprPtr isNull(ExprPtr value);
ExprPtr negation(ExprPtr condition);
ExprPtr conjunction(Op op, ExprPtr left, ExprPtr right);
// + - * / and the joining of texts. 3464 for values that can't be reckoned with.
ExprPtr arithmetic(Op op, ExprPtr left, ExprPtr right);
ExprPtr minus(ExprPtr value);
// A function or an aggregate by name; `countRows` for Count(*). 3061 for an unknown name, 3075 for
// a wrong number of arguments, 3464 for an argument of the wrong type.
ExprPtr call(const QString& name, std::vector<ExprPtr> args, bool countRows);

}  // namespace lang
