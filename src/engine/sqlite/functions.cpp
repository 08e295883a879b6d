#include "engine/sqlite/functions.h"

// The functions that plans call besides those built into the file's engine.
#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <QString>
#include <string_view>

#include "engine/lang/lexer.h"
#include "engine/lang/names.h"
#include "engine/lang/pattern.h"

namespace lang {
namespace {

std::string_view bytes(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text ? text : "", static_cast<size_t>(sqlite3_value_bytes(value))};
}

QString textOf(sqlite3_value* value) {
  const std::string_view utf8 = bytes(value);
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

void giveText(sqlite3_context* context, const QString& text) {
  const QByteArray utf8 = text.toUtf8();
  sqlite3_result_text(context, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

bool isNull(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_NULL;
}

void like(sqlite3_context* context, int, sqlite3_value** args) {
  if (isNull(args[0]) || isNull(args[1])) return;
  auto* pattern = static_cast<Pattern*>(sqlite3_get_auxdata(context, 1));
  if (!pattern) {
    auto fresh = std::make_unique<Pattern>(bytes(args[1]));
    const bool found = fresh->matches(bytes(args[0]));
    sqlite3_set_auxdata(context, 1, fresh.release(),
                        [](void* kept) { delete static_cast<Pattern*>(kept); });
    sqlite3_result_int(context, found ? 1 : 0);
    return;
  }
  sqlite3_result_int(context, pattern->matches(bytes(args[0])) ? 1 : 0);
}

template <char32_t (*change)(char32_t)>
void changeCase(sqlite3_context* context, int, sqlite3_value** args) {
  if (isNull(args[0])) return;
  const QList<uint> characters = textOf(args[0]).toUcs4();
  QString changed;
  for (const uint character : characters) {
    changed += QString::fromUcs4(std::initializer_list<char32_t>{change(character)}.begin(), 1);
  }
  giveText(context, changed);
}

// The number at the beginning of a text, with a decimal point; 0 where there is none.
void leadingNumber(sqlite3_context* context, int, sqlite3_value** args) {
  if (isNull(args[0])) return;
  std::string_view text = bytes(args[0]);
  const size_t start = text.find_first_not_of(" \t+");
  text.remove_prefix(std::min(start, text.size()));
  double number = 0;
  const bool word = !text.empty() && std::isalpha(static_cast<unsigned char>(
                                         text[text.front() == '-' && text.size() > 1 ? 1 : 0]));
  if (!word) std::from_chars(text.data(), text.data() + text.size(), number);
  sqlite3_result_double(context, number);
}

void toText(sqlite3_context* context, int, sqlite3_value** args) {
  if (isNull(args[0])) return;
  if (sqlite3_value_type(args[0]) == SQLITE_FLOAT) {
    giveText(context, Variant(sqlite3_value_double(args[0])).text());
  } else {
    sqlite3_result_value(context, args[0]);
  }
}

void toNumber(sqlite3_context* context, int, sqlite3_value** args) {
  double number = 0;
  if (!isNull(args[0]) && readNumber(textOf(args[0]), number)) {
    sqlite3_result_double(context, number);
  }
}

}  // namespace
}  // namespace lang

void registerFunctions(sqlite3* db) {
  sqlite3_create_collation_v2(
      db, "espanol", SQLITE_UTF8, nullptr,
      [](void*, int leftSize, const void* left, int rightSize, const void* right) {
        return lang::compareNames(
            {static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
            {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
      },
      nullptr);
  struct Function {
    const char* name;
    int args;
    void (*run)(sqlite3_context*, int, sqlite3_value**);
  };
  static constexpr Function kFunctions[] = {
      {"como", 2, lang::like},
      {"mayusculas", 1, lang::changeCase<QChar::toUpper>},
      {"minusculas", 1, lang::changeCase<QChar::toLower>},
      {"valor", 1, lang::leadingNumber},
      {"a_texto", 1, lang::toText},
      {"a_numero", 1, lang::toNumber},
  };
  for (const Function& function : kFunctions) {
    sqlite3_create_function_v2(db, function.name, function.args,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                               function.run, nullptr, nullptr, nullptr);
  }
}
