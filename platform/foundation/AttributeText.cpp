#include "AttributeText.h"

namespace foundation {

std::string parseAttribute(std::string_view text, std::string& value) {
  value = text;
  return {};
}

std::string parseAttribute(std::string_view text, bool& value) {
  value = text == "yes";
  return value || text == "no" ? "" : "\"yes\" or \"no\"";
}

}  // namespace foundation
