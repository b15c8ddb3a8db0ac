#include "Display.h"

#include <algorithm>

#include "NSGraphicsContext.h"

namespace {

std::vector<Display*>& displays() {
  static std::vector<Display*> all;
  return all;
}

}  // namespace

Display::Display() {
  displays().push_back(this);
}

Display::~Display() {
  std::erase(displays(), this);
}

void Display::makeCurrent() {
  std::erase(displays(), this);
  displays().push_back(this);
  NSGraphicsContext::setImageScale(scale());
}

Display* Display::current() {
  return displays().empty() ? nullptr : displays().back();
}
