#pragma once

#include "Command.h"

/// `tovin list`: one line per registered effect: code, name, version, class of its editor.
Command listCommand(CLI::App& program);
