#include <vector>

#include "AUFilterGraphView.h"
#include "ReverbIRview.h"
#include "bpasGraphView.h"
#include "bpas_UIView.h"
#include "dcmp_UIView.h"
#include "dely_GraphView.h"
#include "dely_UIView.h"
#include "filt_UIView.h"
#include "jxAUCompAmountView.h"
#include "jxAUCompGraphView.h"
#include "jxAUGraphDisplay.h"
#include "jxAUGroupView.h"
#include "jxAUKnobOverlayView.h"
#include "jxAULabel.h"
#include "jxAUParamKnobView.h"
#include "jxAUParamPopupView.h"
#include "jxAUPitchParamView.h"
#include "jxAUrenderQ.h"
#include "jxAppleAUGUI_ViewFactory.h"
#include "lmtr_UIView.h"
#include "lpasGraphView.h"
#include "lpas_UIView.h"
#include "mcmp_CrossoverView.h"
#include "mcmp_UIView.h"
#include "mrev_UIView.h"
#include "mrev_largeQCView.h"
#include "mrev_largeRoom.h"
#include "mrev_smallQCView.h"
#include "mrev_smallRoom.h"
#include "pmeqGraphView.h"
#include "pmeq_UIView.h"
#include "sdly_UIView.h"
#include "tmpt_UIView.h"

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
      &jxAULabel::record(),
      &jxAUParamKnobView::record(),
      &jxAUParamPopupView::record(),
      &jxAUPitchParamView::record(),
      &jxAUrenderQ::record(),
      &jxAUGraphDisplay::record(),
      &jxAUCompGraphView::record(),
      &jxAUCompAmountView::record(),
      &mcmp_CrossoverView::record(),
      &mcmp_UIView::record(),
      &dcmp_UIView::record(),
      &lmtr_UIView::record(),
      &sdly_UIView::record(),
      &AUFilterGraphView::record(),
      &filt_UIView::record(),
      &lpasGraphView::record(),
      &lpas_UIView::record(),
      &pmeqGraphView::record(),
      &pmeq_UIView::record(),
      &bpasGraphView::record(),
      &bpas_UIView::record(),
      &dely_GraphView::record(),
      &dely_UIView::record(),
      &ReverbIRview::record(),
      &mrev_smallRoom::record(),
      &mrev_largeRoom::record(),
      &mrev_smallQCView::record(),
      &mrev_largeQCView::record(),
      &mrev_UIView::record(),
      &tmpt_UIView::record(),
  };
}
