#include "AttributeText.h"

#include <charconv>

namespace foundation {
namespace {

template <class Number>
bool whole(std::string_view text, Number& value) {
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc() && result.ptr == end;
}

}  // namespace

std::string parseAttribute(std::string_view text, std::string& value) {
  value = text;
  return {};
}

std::string parseAttribute(std::string_view text, bool& value) {
  value = text == "yes";
  return value || text == "no" ? "" : "\"yes\" or \"no\"";
}

std::string parseAttribute(std::string_view text, float& value) {
  const bool finite = whole(text, value) && value - value == 0;
  return finite ? "" : "a number";
}

std::string parseAttribute(std::string_view text, int& value) {
  return whole(text, value) ? "" : "a whole number";
}

}  // namespace foundation
