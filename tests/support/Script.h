#pragma once

#include <string>
#include <vector>

#include "NSEvent.h"
#include "NSGeometry.h"

using Lines = std::vector<std::string>;

/// A user and a host at a window with an editor, wherever it is. Points are of the window's content, y up.
class Hands {
 public:
  virtual ~Hands() = default;

  /// The middle of the view that the outlet NAME of the editor holds (of the editor itself when it is empty);
  /// of what is in it by NAME.knob, NAME.field or NAME.menu; a handle of a graph by NAME#NUMBER, a place of
  /// its axes by NAME@X,Y; each a little beside by +DX,DY at the end. Throws std::invalid_argument when there
  /// is none.
  virtual NSPoint place(const std::string& name) = 0;
  virtual void press(NSPoint inWindow, unsigned modifiers = 0, int clickCount = 1) = 0;
  /// A drag while pressed.
  virtual void moveBy(float dx, float dy, unsigned modifiers = 0) = 0;
  virtual void release() = 0;
  virtual void wheel(NSPoint inWindow, float notches) = 0;
  virtual void key(NSKey key, unsigned modifiers = 0) = 0;
  virtual void type(const std::string& text, unsigned modifiers = 0) = 0;
  /// Lets that many seconds pass.
  virtual void advance(double seconds) = 0;

  /// What the host does and hears; nothing where there is no effect.
  virtual void set(unsigned parameter, float value);
  /// What reached the effect since the last call (the first call begins to listen): writes (hearWrite), the
  /// last of several in a row; "begin 5" and "end 5" on stages that know of gestures.
  virtual Lines heard() { return {}; }
};

/// Adds "5 = -20", with five digits, to what was heard of a parameter, or puts it in place of the last line
/// when that is a write of the same.
void hearWrite(Lines& heard, const std::string& name, float value);

/// Joined by ", ".
std::string joined(const Lines& lines);

/// Plays steps that ';' separates, and answers what was heard meanwhile, joined:
///   press PLACE [shift] [option]
///   drag DX DY [shift] ...     or  drag to PLACE [shift] ...
///   release
///   click PLACE [shift] ...    or  double PLACE: pressed and released
///   wheel PLACE NOTCHES
///   type TEXT                  keys as <return> <escape> <tab> <S-tab> <C-a> <down*8>
///   wait SECONDS
///   set PARAMETER VALUE        as the host's automation
/// Throws std::logic_error for any other step.
std::string play(Hands& hands, const std::string& script);
