#pragma once

#include <memory>
#include <string>

#include "Display.h"

/// The display that the user sits at, over a connection of its own. It is a source of the run loop of the
/// thread that opens it, and belongs to that thread. Null, and the reason in `error`, when there is none.
/// `scale`: physical pixels to a point; 0 takes the user's setting.
std::unique_ptr<Display> openDisplay(std::string& error, float scale = 0);
