#pragma once

#include <string>
#include <string_view>

class Class;

/// From the text of an attribute in an interface description to a value. Each answers with what was
/// expected when the text does not say such a value, else with the empty string.
namespace foundation {

std::string parseAttribute(std::string_view text, std::string& value);
std::string parseAttribute(std::string_view text, bool& value);          // "yes" or "no"
std::string parseAttribute(std::string_view text, const Class*& value);  // its name

}  // namespace foundation
