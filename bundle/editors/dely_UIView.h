#pragma once

#include "NSPopUpButton.h"
#include "dely_GraphView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUView.h"

/// Editor of the delay. A menu of note values sets the delay time at the host's tempo, which the editor asks
/// for twice a second.
class dely_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void awakeFromNib();
  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  /// A note value was chosen: its title, "1/8", as a part of a whole note; with a full stop dotted, with a T
  /// as a triplet.
  void menuAction(NSMenuItem* item);
  void idle() override;
  /// Beats per minute.
  void setTempo(double beatsPerMinute);
  /// From the knob views of delay time and feedback, when the user takes hold of them and lets go.
  void beginAction(NSObject* sender);
  void endAction(NSObject* sender);

 private:
  jxAUParamKnobView* feedback = nullptr;
  jxAUParamKnobView* delayTime = nullptr;
  jxAUParamKnobView* lowpassCutoff = nullptr;
  jxAUParamKnobView* dryWetMix = nullptr;
  dely_GraphView* graphView = nullptr;
  std::shared_ptr<NSMenu> rhythmMenu;
  NSPopUpButton* rhythmPopup = nullptr;
  double tempo = 120;
};
