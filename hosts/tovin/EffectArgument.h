#pragma once

#include <string>

#include "Components.h"

inline constexpr const char* effectArgumentHelp = "the effect, by its four-letter code";

/// The registered effect with that four-letter code, as "sdly". Null with a message that names the argument
/// and lists what there is.
Component effectFromArgument(const std::string& argument, std::string& error);
