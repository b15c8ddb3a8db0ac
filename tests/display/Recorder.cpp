#include "Recorder.h"

#include <sstream>

namespace {

std::string pair(float x, float y) {
  std::ostringstream text;
  text << x << "," << y;
  return text.str();
}

}  // namespace

void Recorder::displayEvent(const NSEvent& event) {
  last = event;
  switch (event.type) {
    case NSEventType::leftMouseDown:
      note(input_, "down");
      break;
    case NSEventType::leftMouseUp:
      note(input_, "up");
      break;
    case NSEventType::leftMouseDragged:
      if (!input_.ends_with("drag")) note(input_, "drag");
      sumX_ += event.deltaX;
      sumY_ += event.deltaY;
      break;
    case NSEventType::scrollWheel:
      note(input_, "wheel:" + pair(event.deltaX, event.deltaY));
      break;
    case NSEventType::keyDown:
      note(input_, "key:" + event.characters);
      break;
  }
  if (onEvent) onEvent(event);
}

std::string Recorder::motion() const {
  return pair(sumX_, sumY_);
}

void Recorder::note(std::string& log, const std::string& word) {
  log += (log.empty() ? "" : " ") + word;
}
