#include "engine/lang/statementkey.h"

#include "engine/lang/lexer.h"

using namespace lang;

namespace {

constexpr QStringView kMarks[] = {u" ?l", u" ?d", u" ?t", u" ?n", u" ?f"};

// Marks what kind of word it is, so that no two statements read alike.
void addWord(QString& key, const Token& word) {
  key += u' ';
  if (word.kind == TokenKind::Text) {
    key += u'\'';
    key += QString::number(word.text.size());
    key += u':';
  } else if (word.enclosed) {
    key += word.kind == TokenKind::Date ? u'#' : u'[';
  }
  key += word.text;
  if (word.enclosed) key += u']';
}

}  // namespace

StatementKey statementKey(const QString& source, int ano) {
  StatementKey key;
  if (!isStatement(source)) {
    key.key = sourceName(source);
    return key;
  }
  std::vector<Token> words = tokens(source);
  numberLiterals(words);
  key.key.reserve(source.size() + 16);
  for (const Token& word : words) {
    if (word.parameter >= 0) {
      const Literal literal = literalOf(word, ano);
      key.key += kMarks[static_cast<int>(literal.kind)];
      key.literals << literal.value;
      continue;
    }
    addWord(key.key, word);
  }
  return key;
}
