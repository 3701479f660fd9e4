#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvelin {

// The plain text of a number, whatever the locale: up to 15 significant digits, "." as the separator, no
// trailing zeros, and the exponent form ("1E-05", "1E+15") only for very small or very large magnitudes.
// Zero is "0" whatever its sign; NaN and the infinities give the empty text.
std::string PlainNumberText(double Value);

// The number a text holds, or nullopt when it holds none: blanks around it, an optional sign, digits with
// at most one "." (at least one digit in all), and an optional exponent ("1e5", "2.5E-3"). Magnitudes
// beyond a double's range hold no number.
std::optional<double> NumberFromText(std::string_view Text);

// The nearest 16-bit integer, a tie going to the even neighbour. Outside -32768..32767 (and for NaN) it
// raises the runtime fault ErrOverflow with the given source.
int16_t ToInteger16(double Value, const char* Source);

}  // namespace tarvelin
