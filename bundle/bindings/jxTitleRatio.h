#pragma once

#include <optional>
#include <string>

struct jxRatio {
  float over, under;
};

/// The ratio at the beginning of a menu item's title, "3/2" or "7/8.T": two decimal numbers, the slash right
/// behind the first. What follows is not read. Nothing for titles of another form, of more than 99 bytes in
/// Mac Roman or with characters that it lacks.
std::optional<jxRatio> jxTitleRatio(const std::string& title);
