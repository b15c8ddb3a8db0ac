#include "jxAUReferenceLines.h"

#include "NumberText.h"

namespace {

bool offerDecades(const std::function<bool(float)>& addLine) {
  for (int pass = 1; pass <= 4; ++pass) {
    for (const float decade : {10.0f, 100.0f, 1000.0f, 10000.0f}) {
      if (!addLine(decade * static_cast<float>(pass))) return false;
      if (decade < 10000) addLine(decade * static_cast<float>(pass + 4));
    }
  }
  return true;
}

}  // namespace

std::string levelLabel(float decibels) {
  return (decibels == 0 ? " 0" : foundation::signedWholeText(decibels)) + "dB";
}

std::string frequencyLabel(float hertz) {
  return hertz < 1000 ? foundation::fixedText(hertz, 0) + "Hz"
                      : foundation::fixedText(hertz * 0.001f, 0) + "kHz";
}

void offerFrequencyLines(const std::function<bool(float)>& addLine) {
  if (offerDecades(addLine))
    for (const float hertz : {90.0f, 900.0f, 9000.0f}) addLine(hertz);
  for (float hertz = 11000; hertz <= 19000; hertz += 1000)
    if (!addLine(hertz)) break;
}
