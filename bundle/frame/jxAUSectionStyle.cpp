#include "jxAUSectionStyle.h"

#include "NSAttributedString.h"
#include "NSImageUtils.h"

void drawSectionCard(NSRect card, std::string_view label) {
  const auto path = bezierPathWithRoundedRect_cornerRadius(card, 2);
  NSColor::colorWithCalibratedWhite_alpha(1, 0.8f)->set();
  path->fill();
  path->setLineWidth(1);
  NSColor::colorWithCalibratedWhite_alpha(0.5f, 0.5f)->set();
  path->stroke();

  NSMutableAttributedString text(label,
                                 {.font = NSFont::fontWithName_size("LucidaGrande-Bold", 10),
                                  .foregroundColor = NSColor::colorWithCalibratedWhite_alpha(0.3f, 0.7f),
                                  .shadow = {}});
  text.setAlignment(NSCenterTextAlignment);
  text.drawInRect(NSMakeRect(NSMinX(card), NSMaxY(card) - 14, NSWidth(card), 12));
}
