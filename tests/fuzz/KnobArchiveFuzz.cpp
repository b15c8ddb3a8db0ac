// An archive is any bytes: it gives a knob that can be drawn, turned and archived again, or it is refused.

#include <cmath>

#include "FuzzStage.h"
#include "Must.h"
#include "NSArchiver.h"
#include "NSException.h"
#include "NSGraphicsContext.h"
#include "NSUnarchiver.h"
#include "jxAURotaryKnob.h"

namespace {

bool hasValue(const jxAURotaryKnob& knob) {
  return std::isfinite(knob.doubleValue());
}

void turn(const std::shared_ptr<jxAURotaryKnob>& knob) {
  OffscreenDisplay display;
  VirtualClock clock;
  knob->setFrame(NSMakeRect(20, 20, 41, 41));
  const auto window = std::make_shared<NSWindow>(NSMakeRect(100, 100, 81, 81), NSTitledWindowMask,
                                                 NSBackingStoreBuffered, false);
  window->contentView()->addSubview(knob);
  window->makeKeyAndOrderFront();
  display.wheel({140, 140}, 3);
  must(hasValue(*knob), "a knob has a value after the wheel");
  display.press({140, 140});
  display.moveBy(3, 20);
  clock.advance(NSRunLoop::currentRunLoop(), 0.2);
  display.release();
  window->close();
  clock.advance(NSRunLoop::currentRunLoop(), 2);
  must(hasValue(*knob), "a turned knob has a value");
}

void use(const std::shared_ptr<NSObject>& object) {
  const std::string data = NSArchiver::archivedDataWithRootObject(*object);
  const auto copy = NSUnarchiver::unarchiveObjectWithData(data);
  must(NSArchiver::archivedDataWithRootObject(*copy) == data, "what was archived comes back");
  const auto knob = std::dynamic_pointer_cast<jxAURotaryKnob>(object);
  if (!knob) return;
  must(hasValue(*knob), "a restored knob has a value");
  Bitmap bitmap({64, 64}, 1);
  const NSGraphicsContext context(bitmap);
  knob->displayRect({{0, 0}, {64, 64}});
  knob->showTicks();
  turn(knob);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzBundle();
  std::shared_ptr<NSObject> object;
  try {
    object = NSUnarchiver::unarchiveObjectWithData({reinterpret_cast<const char*>(data), size});
  } catch (const NSException& error) {
    must(error.name() == NSInconsistentArchiveException && error.reason().starts_with("archive: byte "),
         "it is said where the archive is wrong: " + error.reason());
    return 0;
  }
  use(object);
  return 0;
}
