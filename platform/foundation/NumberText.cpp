#include "NumberText.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace foundation {

std::string fixedText(double value, int decimals) {
  char text[400];
  const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
  return {text, result.ptr};
}

std::string signedWholeText(double value) {
  return (std::signbit(value) ? "" : "+") + fixedText(value, 0);
}

std::string exactText(float value) {
  char text[80];
  const auto result = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed);
  return {text, result.ptr};
}

ParsedNumber numberPrefix(std::string_view text) {
  size_t at = text.find_first_not_of(" \t\n");
  if (at == std::string_view::npos) return {};
  const size_t sign = at;
  if (text[at] == '+' || text[at] == '-') ++at;
  const auto digit = [&](size_t i) { return i < text.size() && text[i] >= '0' && text[i] <= '9'; };
  if (!digit(at) && !(at < text.size() && text[at] == '.' && digit(at + 1))) return {};
  double value = 0;
  const auto result = std::from_chars(text.data() + at, text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too large or too small for a double: as far as the digits go, "huge" and "nothing" are the reading.
    const std::string_view digits(text.data() + at, static_cast<size_t>(result.ptr - (text.data() + at)));
    const bool tiny =
        digits.find("e-") != std::string_view::npos || digits.find("E-") != std::string_view::npos;
    value = tiny ? 0.0 : HUGE_VAL;
  }
  if (text[sign] == '-') value = -value;
  return {value, true, static_cast<size_t>(result.ptr - text.data())};
}

float floatValue(std::string_view text) {
  return static_cast<float>(numberPrefix(text).value);
}

bool wholeNumberText(std::string_view text, double& value) {
  const ParsedNumber number = numberPrefix(text);
  if (!number.found || number.length != text.size()) return false;
  value = number.value;
  return true;
}

}  // namespace foundation
