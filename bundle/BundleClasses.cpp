#include <vector>

#include "jxAUGraphDisplay.h"
#include "jxAUGroupView.h"
#include "jxAUKnobOverlayView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUGUI_ViewFactory.h"
#include "sdly_UIView.h"

/// Every class of this module that is looked up by name or looks for the module's resources.
extern "C" __attribute__((visibility("default"))) void TovinBundleClasses(std::vector<const Class*>& classes) {
  classes = {
      &jxAppleAUGUI_ViewFactory::record(), &jxAppleAUView::record(),     &jxAUGroupView::record(),
      &jxAURotaryKnob::record(),           &jxValueKnob::record(),       &jxAUKnobOverlayView::record(),
      &jxAUParamView::record(),            &jxAUParamKnobView::record(), &jxAUGraphDisplay::record(),
      &sdly_UIView::record(),
  };
}
