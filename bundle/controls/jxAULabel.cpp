#include "jxAULabel.h"

#include "Class.h"

const Class& jxAULabel::isa() const {
  return record();
}

const Class& jxAULabel::record() {
  static const Class c = Class::of<jxAULabel>("jxAULabel", NSTextField::record())
                             .attribute<&NSTextField::setStringValue>("text");
  return c;
}

jxAULabel::jxAULabel(NSRect frame) : NSTextField(frame) {
  setEditable(false);
  setSelectable(false);
  setDrawsBackground(false);
  setBordered(false);
  setFont(NSFont::fontWithName_size("LucidaGrande", 9));
  setTextColor(NSColor::colorWithCalibratedWhite_alpha(0.25f, 1));
}
