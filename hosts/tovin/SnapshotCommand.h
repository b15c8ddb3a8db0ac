#pragma once

#include "Command.h"

/// `tovin snapshot EFFECT|all`: draws editors to PNG files, without a display.
Command snapshotCommand(CLI::App& program);
