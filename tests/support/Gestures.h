#pragma once

#include <string>
#include <vector>

/// Something that a user does at a fresh editor, and what the effect has to hear of it, wherever the editor
/// is shown: a row is played offscreen, in a real window and in a plug-in.
struct Gesture {
  const char* name;
  const char* effect;
  const char* script;  // as play() takes it
  const char* heard;   // with the beginnings and ends of touches
};
extern const std::vector<Gesture> gestures;

/// What is heard where nobody tells of touches.
std::string withoutTouches(const std::string& heard);
