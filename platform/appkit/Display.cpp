#include "Display.h"

#include <algorithm>

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

Display* Display::current() {
  return displays().empty() ? nullptr : displays().back();
}
