#pragma once

#include <vector>

#include "jxAUHandleGraphDisplay.h"

/// A magnitude response as a filled curve over a logarithmic frequency axis and a linear decibel axis, with
/// handles. Owns the mapping between frequency and gain and the view's points; positions outside the plot
/// are mapped like all others. Main thread.
class jxAUFreqResponseView : public jxAUHandleGraphDisplay {
 public:
  using jxAUHandleGraphDisplay::jxAUHandleGraphDisplay;
  const Class& isa() const override;
  static const Class& record();

  /// Makes room for 2^order values and draws the grid. Hz and dB; 0 stands for the default: from 50 Hz,
  /// which is also the least, to half the sample rate, which is also the most, and −25 to +25 dB.
  void setOrder_minFreq_maxFreq_minDB_maxDB(unsigned long order, float minFreq, float maxFreq, float minDB,
                                            float maxDB);
  /// Copies the 2^order levels in dB, number i for the frequency i × (sRate / 2) / 2^order. Levels that are
  /// not finite lie beyond the plot. Nothing before there is room.
  void setValues(const float* levels);

  NSPoint graphPositionForFreq_gain(float frequency, float gain) const;
  float freqForXPos(double x) const;
  float gainForYPos(double y) const;
  /// Points of the frequency axis.
  float widthForOctaves(float number) const;
  /// Linear between the entries around a position, of which it reads the second only if it must.
  static float interpolateValues_position(const float* levels, float position);

  void drawRect(NSRect dirty) override;

 protected:
  void setParamsForHandle_pos(int index, NSPoint position) override;
  /// Hook: a handle was dragged to that frequency and gain.
  virtual void setParamsForHandle_freq_gain(int index, float frequency, float gain) {
    static_cast<void>(index);
    static_cast<void>(frequency);
    static_cast<void>(gain);
  }
  /// As setValues, but marks nothing.
  void storeValues(const float* levels);

 private:
  void addReferenceLines();
  bool addHoriRefLine_weigth(float gain, float weight);
  bool addVertRefLine_weigth(float frequency, float weight);
  float drawable(float level) const;

  std::vector<float> values;
  std::vector<float> places_;  // of the values along the axis, 0 to 1 of the plot's width
  float sRate = 44100;
  float lowBound = 0;
  float highBound = 0;
  float octaves = 1;  // between the bounds
  float minDB = 0;
  float maxDB = 1;
  float logLowBound = 0;
};
