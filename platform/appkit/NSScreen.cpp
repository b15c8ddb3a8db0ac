#include "NSScreen.h"

#include "Display.h"

std::vector<NSScreen> NSScreen::screens() {
  std::vector<NSScreen> list;
  if (const Display* display = Display::current())
    for (const NSRect& frame : display->screens()) list.emplace_back(frame);
  if (list.empty()) list.emplace_back(NSMakeRect(0, 0, 1600, 1200));
  return list;
}
