#pragma once

#include <memory>
#include <string>
#include <vector>

#include "NSAttributedString.h"
#include "NSImageView.h"

/// Name of the panel's picture in the image registry.
inline constexpr const char* kjxAUGraphBackgroundImage = "jxAUGraphBackground";

/// Base of every graph: a glossy panel with reference lines, painted once into the view's image, over which
/// a subclass draws its curve. Owns the palette of all graphs.
///
/// A subclass overrides prepareBackground to add its reference lines, and drawRect:, which begins with this
/// one's and ends with drawGlow. In between the clip is the plot area, without its rounded corners, which are
/// put back at the end: a clip to curves would slow down each filling. Values are mapped relative to
/// inBounds.
class jxAUGraphDisplay : public NSImageView {
 public:
  using NSImageView::NSImageView;
  const Class& isa() const override;
  static const Class& record();

  static std::shared_ptr<NSColor> graphColor();      // curves and fills
  static std::shared_ptr<NSColor> referenceColor();  // reference lines
  static std::shared_ptr<NSColor> purpleHandle();
  static std::shared_ptr<NSColor> redHandle();
  static std::shared_ptr<NSColor> orangeHandle();
  static std::shared_ptr<NSColor> greenHandle();
  static std::shared_ptr<NSColor> blueHandle();
  static NSTextAttributes referenceTextAttributes();

  /// Loads the panel's picture, the first time in the process, and builds the background.
  void awakeFromNib();
  /// Whether room is kept for labels above and at the left of the plot; rebuilds the background.
  void setUseXUnits_yUnits(bool xUnits, bool yUnits);
  /// Paints the background anew over the old. Reference lines keep their places: they are recorded for the
  /// life of the view, so that adding one again is refused.
  void buildBgImage();
  /// The plot area inside the bounds.
  NSRect inBounds() const;

  /// Draws one horizontal or vertical line, snapped to pixel centres, into the background, with its label
  /// where there is room. False when it was refused because it lies within 8 points of another of its
  /// direction; true otherwise, also when it was left out for being within 4 points of the plot's edge.
  bool addReferenceLineFrom_to_text_weight(NSPoint from, NSPoint to, const std::string& text, float weight);

  void drawRect(NSRect dirty) override;
  bool isOpaque() const override { return true; }

 protected:
  virtual void prepareBackground() {}
  /// Sent by subclasses at the end of their drawing.
  virtual void drawGlow(NSRect rect);
  /// Marks the plot area, outside of which nothing changes.
  void setPlotNeedsDisplay() { setNeedsDisplayInRect(inBounds()); }

 private:
  void drawReferenceLabel(const NSAttributedString& label, NSPoint place) const;
  void drawReferenceLine(NSPoint from, NSPoint to, float weight) const;

  /// What of the background lies outside one of the plot's rounded corners.
  struct Corner {
    NSRect square;
    std::shared_ptr<NSImage> outside;
  };

  void cutCorners();

  std::vector<float> horizontalRefLines;
  std::vector<float> verticalRefLines;
  bool hasXUnits = true;
  bool hasYUnits = true;
  std::vector<Corner> corners_;
};
