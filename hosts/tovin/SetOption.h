#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "AudioUnit.h"

/// Declares `--set ID=VALUE`, which may be given several times; the texts are gathered in `texts`.
void addSetOption(CLI::App& command, std::vector<std::string>& texts);

/// Sets the parameters of the effect. False with a message, that names the argument and what was expected,
/// when one is not of the form ID=VALUE, names no parameter that can be set, or is out of its range.
bool applySetOption(AudioUnit unit, const std::vector<std::string>& texts, std::string& error);
