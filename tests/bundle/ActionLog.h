#pragma once

#include <memory>
#include <string>
#include <utility>

#include "NSControl.h"
#include "NumberText.h"

/// A target and delegate that writes down what it is told: "turned 12.00" for an action of a control with
/// that value, "begin", "end" and "changed" for beginAction:, endAction: and valueChanged:. What is told
/// again at once stands once.
class ActionLog : public NSObject {
 public:
  const Class& isa() const override { return record(); }
  static const Class& record() {
    static const Class c = Class::of<ActionLog>("ActionLog", NSObject::record())
                               .answers<&ActionLog::turned>("turned:")
                               .answers<&ActionLog::began>("beginAction:")
                               .answers<&ActionLog::ended>("endAction:")
                               .answers<&ActionLog::changed>("valueChanged:");
    return c;
  }
  void turned(NSControl* from) { write("turned " + foundation::fixedText(from->floatValue(), 2)); }
  void began(NSObject*) { write("begin"); }
  void ended(NSObject*) { write("end"); }
  void changed(NSObject*) { write("changed"); }

  /// The lines since the last call, joined by ", ".
  std::string take() { return std::exchange(lines_, {}); }
  int messages = 0;

 private:
  void write(const std::string& line) {
    ++messages;
    if (!lines_.ends_with(line)) lines_ += (lines_.empty() ? "" : ", ") + line;
  }

  std::string lines_;
};
