// The error numbers of the printed books, beside the classic ones (53 no such template, 13 no
// date).
#pragma once

namespace err {
inline constexpr int kPlantillaDefectuosa = 28601;
inline constexpr int kFormulaRechazada = 28602;
inline constexpr int kSinImpresora = 28663;
}  // namespace err
