#pragma once

#include "Command.h"

/// `tovin views EFFECT`: the editor's tree of views, for tests and for the curious.
Command viewsCommand(CLI::App& program);
