#pragma once

#include <string>
#include <string_view>

/// Numbers as text, in both directions, always with a decimal point whatever the process's locale says.
namespace foundation {

/// printf's "%.Nf" (rounds half to even on the exact value). Not-a-number reads "nan", infinities "inf".
std::string fixedText(double value, int decimals);
/// printf's "%+.0f".
std::string signedWholeText(double value);
/// The shortest decimal digits that read back as exactly this float, without exponent.
std::string exactText(float value);

/// The number at the beginning of the text: blanks, sign, digits with a point, exponent. What follows is
/// ignored. Without a number `found` is false and the result 0; "inf" and "nan" are no numbers.
struct ParsedNumber {
  double value = 0;
  bool found = false;
  size_t length = 0;  // characters used
};
ParsedNumber numberPrefix(std::string_view text);

/// The value of a text as a control reads it: numberPrefix, 0 when there is none.
float floatValue(std::string_view text);

/// A number that fills the whole text; false when it does not.
bool wholeNumberText(std::string_view text, double& value);

}  // namespace foundation
