#pragma once

#include "Command.h"

/// `tovin open EFFECT`: the editor in a window, on an effect that plays.
Command openCommand(CLI::App& program);
