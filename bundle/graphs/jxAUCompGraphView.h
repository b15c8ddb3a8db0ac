#pragma once

#include <array>
#include <memory>

#include "jxAUGraphDisplay.h"
#include "jxAUParam.h"

/// An identifier that says: the effect has no such parameter.
inline constexpr UInt32 kjxNoParameter = 0xFFFFFFFF;

/// The static transfer curve of a compressor with an optional downward expander: input level across, output
/// level up, in dB on one and the same scale. Follows its parameters. Bound once, before it is first shown;
/// unbound it shows its panel alone.
class jxAUCompGraphView : public jxAUGraphDisplay {
 public:
  using jxAUGraphDisplay::jxAUGraphDisplay;
  const Class& isa() const override;
  static const Class& record();

  /// The axes reach from the threshold's minimum to its maximum + 10 dB. `expThreshold` and `expRatio` may be
  /// kjxNoParameter.
  void setAudioUnit_thresholdID_headRoomID_expThresholdID_expRatio_gain(AudioUnit unit, UInt32 threshold,
                                                                        UInt32 headRoom, UInt32 expThreshold,
                                                                        UInt32 expRatio, UInt32 gain);
  /// Tint of the curve, drawn at alpha 0.6; in force from the next redraw on.
  void setColor(std::shared_ptr<NSColor> color) { mColor = std::move(color); }
  void valueChanged(jxAUParam* binding);

  /// Where a pair of levels in dB stands in the view; not limited to the plot.
  NSPoint pointForIndB_outdB(float in, float out) const;
  void drawRect(NSRect dirty) override;

 private:
  enum Slot { threshold, headRoom, expThreshold, expRatio, gain, slotCount };

  /// A level of the input axis, drawn as a vertical line.
  bool addHoriRefLine_weight(float level, float weight);
  /// A level of the output axis, drawn as a horizontal line.
  bool addVertRefLine_weight(float level, float weight);
  void addReferenceLines();
  float valueOf(Slot slot, float otherwise) const;

  std::array<std::shared_ptr<jxAUParam>, slotCount> param;
  std::shared_ptr<NSColor> mColor;
  float minDecibel = 0;
  float maxDecibel = 0;
};
