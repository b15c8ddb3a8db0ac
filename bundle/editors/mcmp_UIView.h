#pragma once

#include "jxAUCompAmountView.h"
#include "jxAUCompGraphView.h"
#include "jxAUGroupView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUView.h"
#include "mcmp_CrossoverView.h"

/// Editor of the multiband compressor: the crossovers, a global section, and a section in its own colour for
/// each of the four bands.
class mcmp_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  /// The meters take a sample each.
  void idle() override;

 private:
  struct Band {
    jxAUParamKnobView* threshold;
    jxAUParamKnobView* headRoom;
    jxAUParamKnobView* eq;
    jxAUGroupView* box;
    jxAUCompGraphView* graph;
    jxAUCompAmountView* amount;
  };
  /// The outlets of band 0 to 3.
  Band band(int index) const;
  void hookBand(int index, const jxAUwrapper& wrapper) const;

  jxAUParamKnobView *preGain = nullptr, *postGain = nullptr, *attackTime = nullptr, *releaseTime = nullptr;
  jxAUParamKnobView *threshold1 = nullptr, *threshold2 = nullptr, *threshold3 = nullptr,
                    *threshold4 = nullptr;
  jxAUParamKnobView *headRoom1 = nullptr, *headRoom2 = nullptr, *headRoom3 = nullptr, *headRoom4 = nullptr;
  jxAUParamKnobView *eq1 = nullptr, *eq2 = nullptr, *eq3 = nullptr, *eq4 = nullptr;
  jxAUGroupView *band1 = nullptr, *band2 = nullptr, *band3 = nullptr, *band4 = nullptr;
  jxAUGroupView* global = nullptr;
  jxAUCompGraphView *graphView1 = nullptr, *graphView2 = nullptr, *graphView3 = nullptr,
                    *graphView4 = nullptr;
  jxAUCompAmountView *amountView1 = nullptr, *amountView2 = nullptr, *amountView3 = nullptr,
                     *amountView4 = nullptr;
  mcmp_CrossoverView* crossoverView = nullptr;
};
