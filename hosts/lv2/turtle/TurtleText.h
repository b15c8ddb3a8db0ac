#pragma once

#include <string>

/// Declarations of all prefixes that the files use.
extern const char* const turtlePrefixes;

/// A string literal, quoted and escaped. `text` is UTF-8.
std::string turtleString(const std::string& text);
/// A decimal number, with a point.
std::string turtleNumber(float value);
/// An absolute or relative address in angle brackets. `address` holds none of the characters that need
/// escaping.
std::string turtleAddress(const std::string& address);
