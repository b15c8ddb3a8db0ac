#pragma once

#include <memory>
#include <vector>

#include "Class.h"
#include "NSCoder.h"
#include "NSEvent.h"
#include "NSGeometry.h"
#include "NSObject.h"

class NSWindow;

/// A rectangle that draws and takes events. Coordinates are points with the origin at the lower left corner
/// of its bounds. A view owns its subviews; the last one added is drawn on top. Main thread.
class NSView : public NSObject {
 public:
  explicit NSView(NSRect frame) : frame_(frame) {}
  /// Frame and hidden; neither subviews nor place in a tree are archived.
  explicit NSView(NSCoder& coder);
  virtual void encodeWithCoder(NSCoder& coder) const;
  ~NSView() override;
  const Class& isa() const override;
  static const Class& record();

  // The tree.
  NSView* superview() const { return superview_; }
  const std::vector<std::shared_ptr<NSView>>& subviews() const { return subviews_; }
  void addSubview(std::shared_ptr<NSView> view);
  /// Ends a gesture or editing inside it first. The caller keeps a reference if the view shall live on.
  void removeFromSuperview();
  /// Null until the tree hangs in a window.
  NSWindow* window() const;
  bool isDescendantOf(const NSView& ancestor) const;
  /// Where an interface description puts the views that it nests in this one.
  virtual NSView& viewForSubviews() { return *this; }

  // Geometry.
  NSRect frame() const { return frame_; }
  NSRect bounds() const { return {{0, 0}, frame_.size}; }
  /// Subviews keep their frames.
  virtual void setFrame(NSRect frame);
  /// A null view stands for the window. Both views hang in one tree, which need not be in a window.
  NSPoint convertPoint_fromView(NSPoint point, const NSView* view) const;
  NSPoint convertPoint_toView(NSPoint point, const NSView* view) const;
  NSRect convertRect_toView(NSRect rect, const NSView* view) const;

  /// A hidden view and everything in it neither draws nor takes events; hiding ends a gesture inside it.
  void setHidden(bool hidden);
  bool isHidden() const { return hidden_; }

  // Drawing.
  /// Draws the part that lies in `dirty` (own coordinates). The state is fresh: clipped to the visible dirty
  /// part, black, no shadow; nothing that it leaves behind reaches other views.
  virtual void drawRect(NSRect dirty) { static_cast<void>(dirty); }
  /// True when it paints every pixel of its bounds: what lies below is then not drawn.
  virtual bool isOpaque() const { return false; }
  /// Marks the whole bounds to be drawn in this turn (from inside drawRect: in the next).
  void setNeedsDisplay(bool needs);
  void setNeedsDisplayInRect(NSRect rect);
  /// Draws this view and its subviews where they meet `dirty` (own coordinates) into the current context.
  void displayRect(NSRect dirty);

  // Events. What a view does not handle goes to its superview.
  /// The deepest view at the point, which is in the superview's coordinates; null outside or when hidden.
  virtual NSView* hitTest(NSPoint point);
  virtual void mouseDown(const NSEvent& event);
  virtual void mouseDragged(const NSEvent& event);
  virtual void mouseUp(const NSEvent& event);
  virtual void scrollWheel(const NSEvent& event);
  virtual void keyDown(const NSEvent& event);
  /// Every press in an inactive window acts at once here, so the answer only tells the view's wish.
  virtual bool acceptsFirstMouse() const { return false; }
  virtual bool acceptsFirstResponder() const { return false; }
  virtual bool becomeFirstResponder() { return true; }
  virtual bool resignFirstResponder() { return true; }
  /// Takes keys while it is the first responder (an editable field, a pop-up), and is a stop of Tab.
  virtual bool acceptsTyping() const { return false; }

  void removeAllToolTips() {}

 private:
  friend NSWindow;

  bool covers(NSRect rect) const;
  NSPoint originInRoot() const;

  NSRect frame_;
  NSView* superview_ = nullptr;
  NSWindow* window_ = nullptr;  // set in a window's content view alone
  std::vector<std::shared_ptr<NSView>> subviews_;
  bool hidden_ = false;
};
