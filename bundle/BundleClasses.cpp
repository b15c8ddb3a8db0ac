#include <vector>

#include "dcmp_UIView.h"
#include "jxAUCompAmountView.h"
#include "jxAUCompGraphView.h"
#include "jxAUGraphDisplay.h"
#include "jxAUGroupView.h"
#include "jxAUKnobOverlayView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUGUI_ViewFactory.h"
#include "lmtr_UIView.h"
#include "mcmp_CrossoverView.h"
#include "mcmp_UIView.h"
#include "sdly_UIView.h"

/// Every class of this module that is looked up by name or looks for the module's resources.
extern "C" __attribute__((visibility("default"))) void TovinBundleClasses(
    std::vector<const Class*>& classes) {
  classes = {
      &jxAppleAUGUI_ViewFactory::record(),
      &jxAppleAUView::record(),
      &jxAUGroupView::record(),
      &jxAURotaryKnob::record(),
      &jxValueKnob::record(),
      &jxAUKnobOverlayView::record(),
      &jxAUParamView::record(),
      &jxAUParamKnobView::record(),
      &jxAUGraphDisplay::record(),
      &jxAUCompGraphView::record(),
      &jxAUCompAmountView::record(),
      &mcmp_CrossoverView::record(),
      &mcmp_UIView::record(),
      &dcmp_UIView::record(),
      &lmtr_UIView::record(),
      &sdly_UIView::record(),
  };
}
