#include "engine/lang/pattern.h"

#include <algorithm>
#include <QChar>

namespace lang {
namespace {

// Takes one character off the front; bytes that are no UTF-8 count as one each.
char32_t take(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  text.remove_prefix(1);
  if (first < 0xC0) return first;
  size_t more = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
  char32_t character = first & (0x3Fu >> more);
  while (more-- > 0 && !text.empty() && (text.front() & 0xC0) == 0x80) {
    character = (character << 6) | (static_cast<unsigned char>(text.front()) & 0x3Fu);
    text.remove_prefix(1);
  }
  return character;
}

char32_t folded(char32_t character) {
  if (character < 0x80) {
    return character >= U'A' && character <= U'Z' ? character + 32 : character;
  }
  return character <= 0x10FFFF ? QChar::toLower(character) : character;
}

}  // namespace

Pattern::Pattern(std::string_view pattern) {
  while (!pattern.empty()) {
    const char32_t character = take(pattern);
    switch (character) {
      case U'*':
        if (steps_.empty() || steps_.back().kind != Step::Kind::Any) {
          steps_.push_back({Step::Kind::Any});
        }
        break;
      case U'?':
        steps_.push_back({Step::Kind::One});
        break;
      case U'#':
        steps_.push_back({Step::Kind::Digit});
        break;
      case U'[':
        if (readClass(pattern)) break;
        [[fallthrough]];
      default:
        steps_.push_back({Step::Kind::Char, folded(character)});
    }
  }
}

bool Pattern::readClass(std::string_view& rest) {
  const size_t end = rest.find(']');
  if (end == std::string_view::npos) return false;
  std::string_view inside = rest.substr(0, end);
  rest.remove_prefix(end + 1);
  Step step{Step::Kind::Class};
  if (inside.size() > 1 && inside.front() == '!') {
    step.negated = true;
    inside.remove_prefix(1);
  }
  if (inside.empty()) return true;
  while (!inside.empty()) {
    const char32_t first = take(inside);
    char32_t last = first;
    if (inside.size() > 1 && inside.front() == '-') {
      inside.remove_prefix(1);
      last = take(inside);
    }
    step.ranges.push_back({folded(first), folded(last)});
  }
  steps_.push_back(std::move(step));
  return true;
}

bool Pattern::meets(const Step& step, char32_t character) {
  const char32_t c = folded(character);
  switch (step.kind) {
    case Step::Kind::Char:
      return c == step.character;
    case Step::Kind::Digit:
      return c >= U'0' && c <= U'9';
    case Step::Kind::Class:
      return step.negated != std::any_of(step.ranges.begin(), step.ranges.end(),
                                         [c](Range r) { return c >= r.first && c <= r.last; });
    case Step::Kind::One:
    case Step::Kind::Any:
      break;
  }
  return true;
}

// Drops from the front the plain letters that a run must go over before what comes after it. In a
// search through a whole journal that is nearly all of the text.
void Pattern::passOver(std::string_view& text, const Step& next) {
  if (next.kind != Step::Kind::Char || next.character >= 0x80) return;
  const char lower = static_cast<char>(next.character);
  const char upper = lower >= 'a' && lower <= 'z' ? static_cast<char>(lower - 32) : lower;
  std::size_t over = 0;
  while (over < text.size() && static_cast<unsigned char>(text[over]) < 0x80 &&
         text[over] != lower && text[over] != upper)
    ++over;
  text.remove_prefix(over);
}

bool Pattern::matches(std::string_view text) const {
  size_t step = 0;
  size_t star = steps_.size();  // the last run tried, and where its text went on
  std::string_view afterStar;
  while (!text.empty()) {
    if (step < steps_.size() && steps_[step].kind == Step::Kind::Any) {
      star = step++;
      if (step == steps_.size()) return true;
      passOver(text, steps_[step]);
      afterStar = text;
      continue;
    }
    std::string_view rest = text;
    const char32_t character = take(rest);
    if (step < steps_.size() && meets(steps_[step], character)) {
      ++step;
      text = rest;
      continue;
    }
    if (star == steps_.size()) return false;
    take(afterStar);
    step = star + 1;
    passOver(afterStar, steps_[step]);
    text = afterStar;
  }
  while (step < steps_.size() && steps_[step].kind == Step::Kind::Any) ++step;
  return step == steps_.size();
}

}  // namespace lang
