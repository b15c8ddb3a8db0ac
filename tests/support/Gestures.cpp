#include "Gestures.h"

#include <sstream>

const std::vector<Gesture> gestures{
    {"a knob is dragged beyond its end", "sdly",
     "press inToOutDelay.knob; drag 0 9; drag 0 9000; wait 0.3; release", "begin 0, 0 = 44100, end 0"},
    {"a step of the wheel", "sdly", "set 0 20000; wait 0.1; wheel inToOutDelay.knob -1",
     "begin 0, 0 = 19118, end 0"},
    {"Option and a click return to the default", "sdly",
     "set 0 30000; wait 0.1; click inToOutDelay.knob option", "begin 0, 0 = 0, end 0"},
    {"a typed value", "sdly", "click inToOutDelay.field; type 441<return>", "begin 0, 0 = 441, end 0"},
    {"what is no number is rounded off", "sdly", "click inToOutDelay.field; type 12.75x<return>",
     "begin 0, 0 = 13, end 0"},
    {"a typed value beyond the range", "sdly", "click inToOutDelay.field; type 99999999<return>",
     "begin 0, 0 = 44100, end 0"},
    {"Escape takes nothing", "sdly", "click inToOutDelay.field; type 441<escape>", ""},
    {"Tab takes the value and goes on", "mcmp", "click threshold1.field; type -30<tab>6<return>",
     "begin 5, 5 = -30, end 5, begin 9, 9 = 6, end 9"},
    {"a menu's item by keys", "dely", "click rhythmPopup; type <home><down*8><return>",
     "begin 1, 1 = 0.25, end 1"},
    {"a menu's item by the mouse", "filt", "press param12.menu; wait 0.3; drag 0 -34; release",
     "begin 12, 12 = 1, end 12"},
    {"an interval is semitones and cents", "tmpt", "click justPopup; type <home><down*5><return>",
     "begin 1, 1 = 701.95, end 1"},
    {"a crossover's handle, finely", "mcmp", "press crossoverView+7.5,10; drag 100 0 shift; release",
     "begin 3, 3 = 754.54, end 3"},
    {"a handle of two parameters", "dely", "press graphView+-78.5,31.5; drag 100 10; release",
     "begin 1, 1 = 1.6367, begin 2, 2 = 66.993, end 1, end 2"},
};

std::string withoutTouches(const std::string& heard) {
  std::istringstream lines(heard);
  std::string kept;
  for (std::string line; std::getline(lines >> std::ws, line, ',');)
    if (!line.starts_with("begin") && !line.starts_with("end")) kept += (kept.empty() ? "" : ", ") + line;
  return kept;
}
