#pragma once

#include "Command.h"

/// `tovin measure EFFECT`: the effect's response as the graphs of the editors measure it, as a table.
Command measureCommand(CLI::App& program);
