// The expressions of a statement, in the words of the file's engine.
#include "common/errorejecucion.h"
#include "engine/lang/lexer.h"
#include "engine/sqlite/emitter.h"
#include "engine/sqlite/statement.h"

namespace lang {
namespace {

using Kind = Expr::Kind;

// An expression that grows beyond this came of aliases doubling each other.
constexpr qsizetype kMaxText = 1000000;

QString operatorOf(Op op) {
  switch (op) {
    case Op::Add:
      return QStringLiteral(" + ");
    case Op::Subtract:
      return QStringLiteral(" - ");
    case Op::Multiply:
      return QStringLiteral(" * ");
    case Op::Equal:
      return QStringLiteral(" = ");
    case Op::NotEqual:
      return QStringLiteral(" <> ");
    case Op::Less:
      return QStringLiteral(" < ");
    case Op::Greater:
      return QStringLiteral(" > ");
    case Op::LessEqual:
      return QStringLiteral(" <= ");
    case Op::GreaterEqual:
      return QStringLiteral(" >= ");
    case Op::And:
      return QStringLiteral(" AND ");
    case Op::Or:
      return QStringLiteral(" OR ");
    case Op::None:
    case Op::Divide:
    case Op::Join:
      break;
  }
  return {};
}

bool isWildcard(QChar c) {
  return c == u'*' || c == u'?' || c == u'#' || c == u'[';
}

QString quotedText(QString text) {
  if (text.contains(QChar::Null)) throw ErrorEjecucion(err::kErrorDeSintaxis, text);
  return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

// The case of the value is no matter to Like.
const Expr& withoutCase(const Expr& expr) {
  const bool cased =
      expr.kind == Kind::Call && (expr.function == Fn::Ucase || expr.function == Fn::Lcase);
  return cased ? withoutCase(*expr.args[0]) : expr;
}

}  // namespace

QString Emitter::value(const Expr& expr) {
  QString sql =
      expr.isCondition() ? QStringLiteral("(-") + condition(expr) + u')' : plainValue(expr);
  if (sql.size() > kMaxText) {
    throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("expresión demasiado larga"));
  }
  return sql;
}

QString Emitter::plainValue(const Expr& expr) {
  switch (expr.kind) {
    case Kind::Column:
      return column(expr);
    case Kind::Literal:
      return literal(expr);
    case Kind::Binary:
      return binary(expr);
    case Kind::Negate:
      return QStringLiteral("(-") + value(*expr.args[0]) + u')';
    case Kind::If:
      return QStringLiteral("CASE WHEN ") + condition(*expr.args[0]) + QStringLiteral(" THEN ") +
             value(*expr.args[1]) + QStringLiteral(" ELSE ") + value(*expr.args[2]) +
             QStringLiteral(" END");
    case Kind::Call:
      return call(expr);
    case Kind::Aggregate:
      return aggregate(expr);
    case Kind::Not:
    case Kind::Like:
    case Kind::In:
    case Kind::IsNull:
      break;
  }
  return condition(expr);
}

QString Emitter::condition(const Expr& expr) {
  switch (expr.kind) {
    case Kind::Binary:
      if (expr.op == Op::And || expr.op == Op::Or) {
        return u'(' + condition(*expr.args[0]) + operatorOf(expr.op) + condition(*expr.args[1]) +
               u')';
      }
      if (expr.op >= Op::Equal) return compared(expr);
      break;
    case Kind::Not:
      return QStringLiteral("(NOT ") + condition(*expr.args[0]) + u')';
    case Kind::Like:
      return like(expr);
    case Kind::In:
      return inList(expr);
    case Kind::IsNull:
      return u'(' + value(*expr.args[0]) + QStringLiteral(" IS NULL)");
    default:
      break;
  }
  return plainValue(expr);
}

// The value as the text that a bookkeeper would read.
QString Emitter::text(const Expr& expr) {
  QString plain = value(expr);
  if (expr.type == Type::Date) return QStringLiteral("strftime('%d/%m/%Y', ") + plain + u')';
  if (expr.type != Type::Double) return plain;
  return dialect_ == Dialect::View ? QStringLiteral("CAST(") + plain + QStringLiteral(" AS TEXT)")
                                   : QStringLiteral("a_texto(") + plain + u')';
}

QString Emitter::literal(const Expr& expr) {
  if (expr.place == Expr::Place::Statement) return u'?' + QString::number(expr.parameter + 1);
  return constant(expr.value, expr.place);
}

QString Emitter::constant(const Variant& value, Expr::Place place) {
  if (value.isNull()) return QStringLiteral("NULL");
  if (value.isBoolean()) return value.toBool() ? QStringLiteral("(-1)") : QStringLiteral("0");
  if (place == Expr::Place::Own) return u'?' + QString::number(parameters_.own(value));
  if (value.isText()) return quotedText(value.text());
  if (value.isDate()) return quotedText(isoText(value.dateTime()));
  if (!value.isNumber()) return QStringLiteral("NULL");
  const double number = value.number();
  QString written = QString::number(number, 'g', 17);
  if (value == Variant(number) && !written.contains(u'.') && !written.contains(u'e')) {
    written += QStringLiteral(".0");
  }
  return written;
}

QString Emitter::binary(const Expr& expr) {
  const Expr& left = *expr.args[0];
  const Expr& right = *expr.args[1];
  if (expr.op == Op::Join) {
    return QStringLiteral("(COALESCE(") + text(left) + QStringLiteral(", '') || COALESCE(") +
           text(right) + QStringLiteral(", ''))");
  }
  if (expr.op == Op::Divide) {
    return QStringLiteral("(CAST(") + value(left) + QStringLiteral(" AS REAL) / ") + value(right) +
           u')';
  }
  const QString op = expr.type == Type::Text ? QStringLiteral(" || ") : operatorOf(expr.op);
  return u'(' + value(left) + op + value(right) + u')';
}

QString Emitter::compared(const Expr& expr) {
  const Expr& left = *expr.args[0];
  const Expr& right = *expr.args[1];
  const bool texts = left.type == Type::Text && right.type == Type::Text;
  // Codes are compared as the indexes have them, which know the case of the plain letters alone.
  const bool equal = expr.op == Op::Equal || expr.op == Op::NotEqual;
  if (texts && equal && dialect_ != Dialect::View && (left.word || right.word))
    return QStringLiteral("(mayusculas(") + value(left) + u')' + operatorOf(expr.op) +
           QStringLiteral("mayusculas(") + value(right) + QStringLiteral("))");
  return u'(' + value(left) + operatorOf(expr.op) + value(right) +
         (texts ? QStringLiteral(" COLLATE NOCASE)") : QStringLiteral(")"));
}

QString Emitter::inList(const Expr& expr) {
  const QString collate =
      expr.args[0]->type == Type::Text ? QStringLiteral(" COLLATE NOCASE") : QString();
  return u'(' + value(*expr.args[0]) + collate + QStringLiteral(" IN (") + list(expr.args, 1) +
         QStringLiteral("))");
}

QString Emitter::like(const Expr& expr) {
  const Expr& subject = withoutCase(*expr.args[0]);
  const Expr& pattern = *expr.args[1];
  const bool fixed = pattern.kind == Kind::Literal && pattern.place != Expr::Place::Statement &&
                     pattern.value.isText();
  if (dialect_ == Dialect::View) return viewLike(text(subject), pattern);
  if (fixed && subject.kind == Kind::Column && subject.type == Type::Text &&
      sources_.value(subject.source)->table) {
    return likeLiteral(subject, pattern);
  }
  return QStringLiteral("como(") + text(subject) + QStringLiteral(", ") + value(pattern) + u')';
}

// Codes are looked for by their first digits: as a range of codes an index answers it.
QString Emitter::likeLiteral(const Expr& subject, const Expr& pattern) {
  const QString written = pattern.value.text();
  const QString column = value(subject);
  qsizetype digits = 0;
  while (digits < written.size() && written[digits] >= u'0' && written[digits] <= u'9') ++digits;
  const bool exact = digits == written.size();
  const auto whole = [&] {
    return QStringLiteral("como(") + column + QStringLiteral(", ") + literal(pattern) + u')';
  };
  if (digits == 0 || !(exact || isWildcard(written[digits]))) return whole();

  const QString prefix = written.first(digits);
  const QString least = constant(Variant(prefix), pattern.place);
  if (exact)
    return u'(' + column + QStringLiteral(" = ") + least + QStringLiteral(" COLLATE NOCASE)");
  // The sign after "9" stands right behind the digits, so this holds for it too.
  const QString bound = prefix.chopped(1) + QChar(prefix.back().unicode() + 1);
  const QString range = u'(' + column + QStringLiteral(" >= ") + least +
                        QStringLiteral(" COLLATE NOCASE AND ") + column + QStringLiteral(" < ") +
                        constant(Variant(bound), pattern.place) + QStringLiteral(" COLLATE NOCASE");
  const bool rangeSaysAll = written.sliced(digits) == u"*";
  return rangeSaysAll ? range + u')' : range + QStringLiteral(" AND ") + whole() + u')';
}

QString Emitter::viewLike(const QString& subject, const Expr& pattern) const {
  if (pattern.kind != Kind::Literal) {
    throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("LIKE"));
  }
  const QString written = pattern.value.display();
  QString translated;
  if (!written.contains(u'#') && !written.contains(u'[')) {
    for (const QChar c : written) {
      if (c == u'%' || c == u'_' || c == u'\\') translated += u'\\';
      translated += c == u'*' ? QChar(u'%') : c == u'?' ? QChar(u'_') : c;
    }
    return u'(' + subject + QStringLiteral(" LIKE ") + quotedText(translated) +
           QStringLiteral(" ESCAPE '\\')");
  }
  for (const QChar c : written) {
    if (c == u'#') {
      translated += QStringLiteral("[0-9]");
    } else {
      translated += c == u'!' && translated.endsWith(u'[') ? QChar(u'^') : c;
    }
  }
  return QStringLiteral("(lower(") + subject + QStringLiteral(") GLOB ") +
         quotedText(translated.toLower()) + u')';
}

QString Emitter::aggregate(const Expr& expr) {
  if (expr.aggregate == Agg::CountRows) return QStringLiteral("COUNT(*)");
  const QString arg = u'(' + value(*expr.args[0]) + u')';
  switch (expr.aggregate) {
    case Agg::Avg:
      return QStringLiteral("AVG") + arg;
    case Agg::Count:
      return QStringLiteral("COUNT") + arg;
    case Agg::Max:
      return QStringLiteral("MAX") + arg;
    case Agg::Min:
      return QStringLiteral("MIN") + arg;
    case Agg::SumMillionths:
      return QStringLiteral("(SUM") + arg + QStringLiteral(" / 1000000.0)");
    case Agg::OneMillionths:
      return u'(' + arg + QStringLiteral(" / 1000000.0)");
    default:
      return QStringLiteral("SUM") + arg;
  }
}

QString Emitter::call(const Expr& expr) {
  const bool view = dialect_ == Dialect::View;
  const auto arg = [&](size_t i) { return value(*expr.args[i]); };
  const auto datePart = [&](int at, int length) {
    return QStringLiteral("CAST(substr(%1, %2, %3) AS INTEGER)").arg(arg(0)).arg(at).arg(length);
  };
  const auto named = [&](const char* own, const char* builtIn) {
    return QString::fromLatin1(view ? builtIn : own) + u'(' + text(*expr.args[0]) + u')';
  };
  switch (expr.function) {
    case Fn::Abs:
      return QStringLiteral("abs(") + arg(0) + u')';
    case Fn::Year:
      return datePart(1, 4);
    case Fn::Month:
      return datePart(6, 2);
    case Fn::Day:
      return datePart(9, 2);
    case Fn::Lcase:
      return named("minusculas", "lower");
    case Fn::Ucase:
      return named("mayusculas", "upper");
    case Fn::Len:
      return named("length", "length");
    case Fn::Trim:
      return named("trim", "trim");
    case Fn::Left:
      return QStringLiteral("substr(") + text(*expr.args[0]) + QStringLiteral(", 1, ") + arg(1) +
             u')';
    case Fn::Right:
      return QStringLiteral("substr(") + text(*expr.args[0]) + QStringLiteral(", -") + arg(1) +
             QStringLiteral(", ") + arg(1) + u')';
    case Fn::Mid:
      return QStringLiteral("substr(") + text(*expr.args[0]) + QStringLiteral(", ") +
             list(expr.args, 1) + u')';
    case Fn::Nz:
      return QStringLiteral("COALESCE(") + list(expr.args, 0) + u')';
    case Fn::NumberPart:
      return QStringLiteral("CASE WHEN typeof(%1) <> 'text' THEN %1 END").arg(arg(0));
    case Fn::TextPart:
      return QStringLiteral("CASE WHEN typeof(%1) = 'text' THEN %1 END").arg(arg(0));
    case Fn::ToNumber:
      return QStringLiteral("a_numero(") + arg(0) + u')';
    case Fn::Val:
      break;
  }
  return view ? QStringLiteral("CAST(") + text(*expr.args[0]) + QStringLiteral(" AS REAL)")
              : QStringLiteral("valor(") + text(*expr.args[0]) + u')';
}

QString Emitter::list(const std::vector<ExprPtr>& args, size_t first) {
  QStringList all;
  for (size_t i = first; i < args.size(); ++i) all << value(*args[i]);
  return all.join(QStringLiteral(", "));
}

}  // namespace lang
