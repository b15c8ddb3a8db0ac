#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "jxAUGraphDisplay.h"

/// What is highlighted round a handle while it is edited.
enum HandleMode : uint32_t {
  HandleModePoint = 0,       // nothing; its width cannot be changed
  HandleModeBand = 1,        // a band of the handle's width, centred
  HandleModeLowRegion = 2,   // from the plot's left edge to the handle
  HandleModeHighRegion = 3,  // from the handle to the plot's right edge
};

/// A graph with coloured handles that are dragged. While one is dragged the pointer is hidden; Shift is a
/// tenth of the motion, Option changes the width; on release the pointer is put to the tracked point.
///
/// A subclass adds its handles in its constructor and overrides the hooks: where a handle stands for the
/// values of the moment, and what a dragged position or width does to them. Its drawRect: begins with this
/// one's and ends with drawHandles:. Main thread.
class jxAUHandleGraphDisplay : public jxAUGraphDisplay {
 public:
  using jxAUGraphDisplay::jxAUGraphDisplay;
  const Class& isa() const override;
  static const Class& record();

  /// The new handle has the next index; it stands at (0, 0) with width 0.
  void addHandleWithColor_mode(std::shared_ptr<NSColor> color, HandleMode mode);
  int handleCount() const { return static_cast<int>(handleColors.size()); }
  /// An index beyond the last handle is logged; the answers are then null and (0, 0), and nothing is stored.
  std::shared_ptr<NSColor> colorOfHandle(unsigned index) const;
  NSPoint getPointForHandle(unsigned index) const;
  /// View coordinates; the width in points. No redraw.
  void setPoint_width_forHandle(NSPoint point, float width, unsigned index);
  void calculateHandles();

  /// Marks a handle as edited elsewhere, on a knob; −1 for none.
  void setExternalEditedHandle(int index);

  void drawRect(NSRect dirty) override;
  void mouseDown(const NSEvent& event) override;
  void mouseDragged(const NSEvent& event) override;
  void mouseUp(const NSEvent& event) override;
  bool acceptsFirstMouse() const override { return true; }

 protected:
  void drawHandles(NSRect rect) const;

  // Hooks.
  virtual void calculateHandle(int index) { static_cast<void>(index); }
  /// The redraw follows from the change of the parameter.
  virtual void setParamsForHandle_pos(int index, NSPoint position) {
    static_cast<void>(index);
    static_cast<void>(position);
  }
  /// `delta`: 1 for 20 points of motion down or to the left.
  virtual void changeBandWidthForHandle_delta(int index, float delta) {
    static_cast<void>(index);
    static_cast<void>(delta);
  }

 private:
  bool isActive(size_t index) const;
  NSRect highlightedRegion(size_t index) const;

  std::vector<NSPoint> handlePoints;
  std::vector<HandleMode> handleModes;
  std::vector<float> handleWidths;
  std::vector<std::shared_ptr<NSColor>> handleColors;
  int draggedHandle = -1;
  NSPoint currentPoint;
  int extHandle = -1;
};
