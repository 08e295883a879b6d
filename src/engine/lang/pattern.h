// The patterns of Like: "*" any run, "?" one character, "#" one digit, "[a-c]" one of a class,
// "[!a-c]" one outside it. Case is no matter, in ñ and accented letters too. A "[" without its "]"
// stands for itself, so a search that is still being typed finds what it says.
#pragma once

#include <string_view>
#include <vector>

namespace lang {

class Pattern {
 public:
  // Both texts are UTF-8.
  explicit Pattern(std::string_view pattern);
  bool matches(std::string_view text) const;

 private:
  struct Range {
    char32_t first;
    char32_t last;
  };
  struct Step {
    enum class Kind { Char, Any, One, Digit, Class } kind;
    char32_t character = 0;  // folded
    bool negated = false;
    std::vector<Range> ranges{};
  };
  static bool meets(const Step& step, char32_t character);
  static void passOver(std::string_view& text, const Step& next);
  bool readClass(std::string_view& rest);
  std::vector<Step> steps_;
};

}  // namespace lang
