#include "engine/lang/names.h"

#include <QChar>
#include <QString>

namespace lang {
namespace {

// What decides first, then, and last.
struct Letter {
  int base = 0;
  int accent = 0;
  int capital = 0;
};

// The character at `at`, which moves past it. What is no UTF-8 counts byte by byte.
char32_t next(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(at++);
  const int more = first < 0xC0 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
  if (more == 0) return first;
  char32_t character = first & (0x3F >> more);
  for (int i = 0; i < more && at < text.size(); ++i)
    character = character << 6 | (byte(at++) & 0x3F);
  return character;
}

Letter letter(char32_t character) {
  constexpr char32_t kSmallEnye = 0xF1, kCapitalEnye = 0xD1;
  Letter result;
  if (character < 0x80) {
    result.capital = character >= 'A' && character <= 'Z' ? 1 : 0;
    result.base = 2 * static_cast<int>(result.capital ? character + 32 : character);
    return result;
  }
  result.capital = QChar::toLower(character) != character ? 1 : 0;
  if (character == kSmallEnye || character == kCapitalEnye) {
    result.base = 2 * 'n' + 1;
    return result;
  }
  // An accented letter is made of its plain one and the accent.
  const QString parts = QChar::decomposition(character);
  if (!parts.isEmpty() && parts.at(0).unicode() < 0x80 && parts.at(0).isLetter()) {
    result.base = 2 * parts.at(0).toLower().unicode();
    result.accent = parts.size() > 1 ? parts.at(1).unicode() : 1;
    return result;
  }
  result.base = 2 * static_cast<int>(QChar::toLower(character));
  return result;
}

}  // namespace

int compareNames(std::string_view left, std::string_view right) {
  std::size_t i = 0, j = 0;
  int accents = 0, capitals = 0;
  while (i < left.size() && j < right.size()) {
    const Letter a = letter(next(left, i)), b = letter(next(right, j));
    if (a.base != b.base) return a.base - b.base;
    if (accents == 0) accents = a.accent - b.accent;
    if (capitals == 0) capitals = a.capital - b.capital;
  }
  if (i < left.size()) return 1;
  if (j < right.size()) return -1;
  return accents != 0 ? accents : capitals;
}

}  // namespace lang
