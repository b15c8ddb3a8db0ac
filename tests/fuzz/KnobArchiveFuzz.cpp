// An archive is any bytes: it gives a knob that can be drawn, turned and archived again, or it is refused.

#include <cmath>

#include "EditorStage.h"
#include "Must.h"
#include "NSArchiver.h"
#include "NSException.h"
#include "NSUnarchiver.h"
#include "jxAURotaryKnob.h"

namespace {

void use(const std::shared_ptr<NSObject>& object) {
  const std::string data = NSArchiver::archivedDataWithRootObject(*object);
  const auto copy = NSUnarchiver::unarchiveObjectWithData(data);
  must(NSArchiver::archivedDataWithRootObject(*copy) == data, "what was archived comes back");
  const auto knob = std::dynamic_pointer_cast<jxAURotaryKnob>(object);
  if (!knob) return;
  must(std::isfinite(knob->doubleValue()), "a restored knob has a value");
  painted({64, 64}, 1, [&] { knob->displayRect({{0, 0}, {64, 64}}); });
  knob->showTicks();

  Stage stage;
  knob->setFrame(NSMakeRect(0, 0, 41, 41));
  stage.show(knob);
  stage.wheel({40, 40}, 3);
  must(std::isfinite(knob->doubleValue()), "a knob has a value after the wheel");
  stage.press(*knob);
  stage.moveBy(3, 20);
  stage.advance(0.2);
  stage.release();
  stage.window->close();
  stage.advance(2);
  must(std::isfinite(knob->doubleValue()), "a turned knob has a value");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  EditorStage::bundle();
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
