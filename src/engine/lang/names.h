// The order of names for a Spanish reader.
#pragma once

#include <string_view>

namespace lang {

// Below 0, 0 or above 0 as `left` stands before, with or after `right`, both UTF-8: letter by
// letter, ñ after n; where the letters are the same those without accents first, and then small
// ones before capitals. Codes of plain letters and digits stand as their index has them.
//   Alba, ÁLBUM, Alba 2, nube, Ñandú, oca  ->  Alba, Alba 2, ÁLBUM, nube, Ñandú, oca
int compareNames(std::string_view left, std::string_view right);

}  // namespace lang
