#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tidemark {

// Readers and writers of the texts that settings are stored as. Anybody can leave any text in the
// store, so the readers take every text.

// A truth value: "True" or "False" in any letter case, or a number (zero is false, any other true).
// A number may stand between blanks and may have a sign, a decimal point and an exponent. Nothing
// when the text is neither, when anything follows the number, or when the number is beyond a
// double's range.
[[nodiscard]] std::optional<bool> TruthValue(std::string_view text);

// "True" or "False".
[[nodiscard]] std::string TextFromTruth(bool value);

// The number that the text starts with, in the forms that TruthValue knows; blanks, tabs and line
// breaks may stand before it, and what follows it does not matter ("12px" is 12, "1 500" is 1).
// Zero when the text does not start with a number; infinite beyond a double's range.
[[nodiscard]] double LeadingNumber(std::string_view text);

// The nearest whole number, halves to the even one; nothing when 32 bits cannot hold it.
[[nodiscard]] std::optional<std::int32_t> RoundHalvesToEven(double value);

// The shortest text of a finite single-precision number, up to seven digits: "300", "250.5",
// "1E+07".
[[nodiscard]] std::string TextFromSingle(float value);

}  // namespace tidemark
