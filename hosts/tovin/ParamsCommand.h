#pragma once

#include "Command.h"

/// `tovin params EFFECT`: prints the parameters of an effect.
Command paramsCommand(CLI::App& program);
