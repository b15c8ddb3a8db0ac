#pragma once

#include <string>

#include "BundleFixture.h"
#include "TestUnit.h"

/// An editor of a live effect, or a single view, in a shown window at (100, 100), used by hand and by its
/// host.
class EditorTest : public BundleFixture {
 protected:
  ~EditorTest() override;

  /// The editor of a registered effect of this system, from the module, drawn.
  void open(const std::string& subtype);
  void open(Component component);
  void show(const std::shared_ptr<NSView>& view);
  void close();

  float parameter(AudioUnitParameterID id) const { return valueOf(unit, id); }
  void automate(AudioUnitParameterID id, float value) const { hostSets(unit, id, value); }

  /// The view that an outlet of the editor holds.
  template <class T = NSView>
  T& outlet(const std::string& name) const {
    const Class::Outlet* row = editor->isa().outletNamed(name);
    return dynamic_cast<T&>(*row->connected(*editor));
  }
  /// 0xRRGGBB of what the window shows at a point of its content.
  unsigned colorAt(NSPoint inWindow) const;
  /// What the editor draws.
  Bitmap picture() const { return drawn(*editor); }
  /// What was presented since the last call, in window points.
  std::vector<NSRect> takeDamage() const { return display_.windows().front()->takePresented(); }
  static NSRect frameInWindow(const NSView& view) { return view.convertRect_toView(view.bounds(), nullptr); }

  Unit unit;
  std::shared_ptr<NSView> editor;
  std::shared_ptr<NSWindow> window;
};
