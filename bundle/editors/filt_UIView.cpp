#include "filt_UIView.h"

#include <algorithm>

#include "NSViewUtils.h"

namespace {

constexpr UInt32 lastVersionAtHalfFrequency = 0x00010400;
constexpr int noHandle = -1;

struct Control {
  const char* name;
  unsigned band;        // and its handle
  bool marksItsHandle;  // while it is held
};
constexpr std::array<Control, AUFilterGraphView::parameterCount> table{{
    {"filter type", 0, false},
    {"frequency", 0, true},
    {"gain", 0, true},
    {"frequency", 1, true},
    {"gain", 1, true},
    {"bandwidth", 1, true},
    {"frequency", 2, true},
    {"gain", 2, true},
    {"bandwidth", 2, true},
    {"frequency", 3, true},
    {"gain", 3, true},
    {"bandwidth", 3, true},
    {"filter type", 4, false},
    {"frequency", 4, true},
    {"gain", 4, true},
}};

constexpr bool isCenterFrequency(size_t id) {
  return id == 3 || id == 6 || id == 9;
}

constexpr float outerWidening = 2;

struct Section {
  size_t lowest, highest;  // controls
  float widening;
  const char* name;
};
constexpr Section sections[] = {{2, 0, outerWidening, "Low"},
                                {5, 3, 0, "Center 1"},
                                {8, 6, 0, "Center 2"},
                                {11, 9, 0, "Center 3"},
                                {14, 12, outerWidening, "High"}};

}  // namespace

const Class& filt_UIView::isa() const {
  return record();
}

const Class& filt_UIView::record() {
  static const Class c = Class::of<filt_UIView>("filt_UIView", jxAppleAUView::record())
                             .answers<&filt_UIView::beginAction>("beginAction:")
                             .answers<&filt_UIView::endAction>("endAction:")
                             .outlet<&filt_UIView::param0>("param0")
                             .outlet<&filt_UIView::param1>("param1")
                             .outlet<&filt_UIView::param2>("param2")
                             .outlet<&filt_UIView::param3>("param3")
                             .outlet<&filt_UIView::param4>("param4")
                             .outlet<&filt_UIView::param5>("param5")
                             .outlet<&filt_UIView::param6>("param6")
                             .outlet<&filt_UIView::param7>("param7")
                             .outlet<&filt_UIView::param8>("param8")
                             .outlet<&filt_UIView::param9>("param9")
                             .outlet<&filt_UIView::param10>("param10")
                             .outlet<&filt_UIView::param11>("param11")
                             .outlet<&filt_UIView::param12>("param12")
                             .outlet<&filt_UIView::param13>("param13")
                             .outlet<&filt_UIView::param14>("param14")
                             .outlet<&filt_UIView::freqResponseView>("freqResponseView");
  return c;
}

std::array<jxAUParamView*, AUFilterGraphView::parameterCount> filt_UIView::controls() const {
  return {param0, param1, param2,  param3,  param4,  param5,  param6, param7,
          param8, param9, param10, param11, param12, param13, param14};
}

void filt_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  const bool old = wrapper->auVersion() <= lastVersionAtHalfFrequency;
  AudioUnitParameter address = wrapper->globalParameter(0);
  const auto views = controls();
  for (size_t id = 0; id < views.size(); ++id) {
    address.mParameterID = static_cast<AudioUnitParameterID>(id);
    views[id]->setCustomName(table[id].name);
    views[id]->setAUParameter(address);
    views[id]->setColor(freqResponseView->colorOfHandle(table[id].band));
    if (old && isCenterFrequency(id)) views[id]->setCustomScale(0.5);
  }
  performSelectorOnSubviews_object(*this, NSSelectorFromString("setDelegate:"), this);
  if (old) freqResponseView->activatePatch();
  freqResponseView->setAudioUnit(wrapper->audioUnit());
  jxAppleAUView::setAU(std::move(wrapper));
}

void filt_UIView::beginAction(NSObject* sender) {
  const auto views = controls();
  const auto found = std::find(views.begin(), views.end(), sender);
  if (found == views.end()) return;
  const Control& control = table[static_cast<size_t>(found - views.begin())];
  if (control.marksItsHandle) freqResponseView->setExternalEditedHandle(static_cast<int>(control.band));
}

void filt_UIView::endAction(NSObject*) {
  freqResponseView->setExternalEditedHandle(noHandle);
}

void filt_UIView::drawRect(NSRect dirty) {
  jxAppleAUView::drawRect(dirty);
  if (!auWrapper()) return;
  const auto views = controls();
  for (const Section& section : sections) {
    const NSRect around = standardRectExpand(NSInsetRect(
        sectionRectFrom_to(*views[section.lowest], *views[section.highest]), -section.widening, 0));
    if (!NSIntersectsRect(NSInsetRect(around, -1, -1), dirty)) continue;
    drawSectionRect_color_name(around, *freqResponseView->colorOfHandle(table[section.lowest].band),
                               section.name);
  }
}
