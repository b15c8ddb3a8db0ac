#include "OpenDisplay.h"

#include "X11Display.h"

std::unique_ptr<Display> openDisplay(std::string& error, float scale) {
  return X11Display::create(error, scale);
}
