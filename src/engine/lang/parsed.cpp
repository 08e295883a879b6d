#include "engine/lang/parsed.h"

namespace lang {
namespace {

constexpr QStringView kMarks[] = {u" ?l", u" ?d", u" ?t", u" ?n", u" ?f", u" ?p"};

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

Parsed::Parsed(const QString& source, int ano) : text_(source), ano_(ano) {
  if (!lang::isStatement(text_)) {
    key_ = name_ = sourceName(text_);
    return;
  }
  words_ = tokens(text_);
  numberLiterals(words_);
  key_.reserve(text_.size() + 16);
  for (const Token& word : words_) {
    if (word.parameter >= 0) {
      const Literal literal = literalOf(word, ano);
      key_ += kMarks[static_cast<int>(literal.kind)];
      literals_ << literal.value;
      continue;
    }
    addWord(key_, word);
  }
}

SelectNode Parsed::tree() const {
  return parseStatement(words_, ano_);
}

}  // namespace lang
