// An archive is any bytes: it gives a knob that can be drawn, turned and archived again, or it is refused.

#include <cmath>

#include "EditorStage.h"
#include "Must.h"
#include "NSArchiver.h"
#include "NSException.h"
#include "NSUnarchiver.h"
#include "jxAURotaryKnob.h"

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
  const std::string archive = NSArchiver::archivedDataWithRootObject(*object);
  const auto copy = NSUnarchiver::unarchiveObjectWithData(archive);
  must(NSArchiver::archivedDataWithRootObject(*copy) == archive, "what was archived comes back");
  const auto knob = std::dynamic_pointer_cast<jxAURotaryKnob>(object);
  if (!knob) return 0;
  must(std::isfinite(knob->doubleValue()), "a restored knob has a value");
  knob->setFrame(NSMakeRect(0, 0, 41, 41));  // a frame of any size is an archive's right, but no bitmap's
  drawn(*knob);
  knob->showTicks();
  Stage stage;
  stage.show(knob);
  stage.play("wheel +0,0 3; press +0,0; drag 3 20; wait 0.2; release");
  stage.window->close();
  stage.advance(2);
  must(std::isfinite(knob->doubleValue()), "a turned knob has a value");
  return 0;
}
