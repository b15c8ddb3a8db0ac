#pragma once

#include "Command.h"

/// `tovin process EFFECT IN OUT [--set ID=VALUE]...`: an audio file through an effect into another.
Command processCommand(CLI::App& program);
