#include "dely_UIView.h"

#include "jxTitleRatio.h"

namespace {

constexpr int dryWetMixParameter = 0, delayTimeParameter = 1, feedbackParameter = 2, cutoffParameter = 3;
constexpr NSTimeInterval tickInterval = 0.5;
constexpr float quartersOfAWhole = 4;
constexpr int noHandle = -1;

}  // namespace

const Class& dely_UIView::isa() const {
  return record();
}

const Class& dely_UIView::record() {
  static const Class c = Class::of<dely_UIView>("dely_UIView", jxAppleAUView::record())
                             .answers<&dely_UIView::awakeFromNib>("awakeFromNib")
                             .answers<&dely_UIView::menuAction>("menuAction:")
                             .answers<&dely_UIView::beginAction>("beginAction:")
                             .answers<&dely_UIView::endAction>("endAction:")
                             .outlet<&dely_UIView::feedback>("feedback")
                             .outlet<&dely_UIView::delayTime>("delayTime")
                             .outlet<&dely_UIView::lowpassCutoff>("lowpassCutoff")
                             .outlet<&dely_UIView::dryWetMix>("dryWetMix")
                             .outlet<&dely_UIView::graphView>("graphView")
                             .outlet<&dely_UIView::rhythmMenu>("rhythmMenu")
                             .outlet<&dely_UIView::rhythmPopup>("rhythmPopup");
  return c;
}

void dely_UIView::awakeFromNib() {
  jxAppleAUView::awakeFromNib();
  const NSTextAttributes small{
      .font = NSFont::fontWithName_size("LucidaGrande", 9), .foregroundColor = {}, .shadow = {}};
  for (int i = 1; i < rhythmMenu->numberOfItems(); ++i) {
    NSMenuItem* item = rhythmMenu->itemAtIndex(i);
    item->setTarget(this);
    item->setAction(NSSelectorFromString("menuAction:"));
    item->setAttributedTitle(NSAttributedString(item->title(), small));
  }
  rhythmPopup->setMenu(rhythmMenu);
}

void dely_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  delayTime->setAUParameter(wrapper->globalParameter(delayTimeParameter));
  delayTime->setDelegate(this);
  feedback->setAUParameter(wrapper->globalParameter(feedbackParameter));
  feedback->setDelegate(this);
  lowpassCutoff->setCustomName("lowpass cutoff");
  lowpassCutoff->setAUParameter(wrapper->globalParameter(cutoffParameter));
  dryWetMix->setAUParameter(wrapper->globalParameter(dryWetMixParameter));
  graphView->setAU(wrapper);
  jxAppleAUView::setAU(wrapper);
  wrapper->perpareHostCallbacks();
  idle();
  startTimerWithInterval(tickInterval);
}

void dely_UIView::menuAction(NSMenuItem* item) {
  const auto ratio = jxTitleRatio(item->title());
  if (!ratio) return;
  float beats = ratio->over / ratio->under * quartersOfAWhole;
  if (item->title().find('.') != std::string::npos) beats *= 1.5f;
  if (item->title().find('T') != std::string::npos) beats = static_cast<float>(beats * 2.0 / 3.0);
  delayTime->auParam()->setFloatValue(static_cast<float>(beats / (tempo / 60)));
}

void dely_UIView::idle() {
  if (auWrapper()) setTempo(auWrapper()->auTempo());
}

void dely_UIView::setTempo(double beatsPerMinute) {
  if (tempo == beatsPerMinute) return;
  tempo = beatsPerMinute;
  graphView->setTempo(beatsPerMinute);
}

void dely_UIView::beginAction(NSObject*) {
  graphView->setExternalEditedHandle(0);
}

void dely_UIView::endAction(NSObject*) {
  graphView->setExternalEditedHandle(noHandle);
}
