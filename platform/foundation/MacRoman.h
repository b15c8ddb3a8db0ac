#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The Mac Roman character set, in which component and parameter names are stored.
namespace foundation {

/// Every byte has a character, so this always succeeds.
std::string utf8FromMacRoman(std::string_view bytes);
/// Nothing when the text is not UTF-8 or has a character that Mac Roman lacks.
std::optional<std::string> macRomanFromUtf8(std::string_view text);

}  // namespace foundation
