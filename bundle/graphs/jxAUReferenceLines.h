#pragma once

#include <functional>
#include <string>

/// "+20dB"; 0 is " 0dB".
std::string levelLabel(float decibels);
/// "500Hz", from 1000 Hz on "5kHz".
std::string frequencyLabel(float hertz);

/// Offers the lines of a logarithmic frequency axis, the most telling first: in each of four passes one line
/// of each decade, then its neighbours where there was room, then those above 10 kHz. `addLine` answers
/// false for a line that would crowd another, which ends a series.
void offerFrequencyLines(const std::function<bool(float hertz)>& addLine);
