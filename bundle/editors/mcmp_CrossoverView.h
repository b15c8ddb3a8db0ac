#pragma once

#include <array>
#include <memory>

#include "jxAUHandleGraphDisplay.h"
#include "jxAUParam.h"
#include "jxAUwrapper.h"

/// How the multiband compressor splits the spectrum: four coloured funnels, each from its band's stretch of
/// a logarithmic frequency axis down to a quarter of the lower edge, and three handles that are dragged.
class mcmp_CrossoverView : public jxAUHandleGraphDisplay {
 public:
  static constexpr int bandCount = 4;

  explicit mcmp_CrossoverView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  /// Binds the crossover frequencies; a second time is an assertion failure.
  void setAU(const std::shared_ptr<jxAUwrapper>& wrapper);
  /// `band`: 0 to 3.
  const std::shared_ptr<NSColor>& colorOfBand(int band) const {
    return bandColor.at(static_cast<size_t>(band));
  }
  void valueChanged(jxAUParam* binding);

  /// Hz to a point on the handles' line, and back from its x.
  NSPoint graphPositionForFreq(float frequency) const;
  float frequencyForX(float x) const;
  void drawRect(NSRect dirty) override;

 protected:
  void calculateHandle(int index) override;
  void setParamsForHandle_pos(int index, NSPoint position) override;

 private:
  static constexpr int handles = bandCount - 1;

  bool isBound() const { return param[0] != nullptr; }
  bool addVertRefLine_weigth(float frequency, float weight);
  void addReferenceLines();
  void fillBand(int band) const;
  void drawLabel(int handle) const;

  std::array<std::shared_ptr<jxAUParam>, handles> param;
  float logMin = 0;
  float logMax = 0;
  std::array<std::shared_ptr<NSColor>, bandCount> bandColor;
};
