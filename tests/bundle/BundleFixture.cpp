#include "BundleFixture.h"

#include <cstdlib>
#include <utility>

#include "NSControl.h"
#include "NSGraphicsContext.h"
#include "NumberText.h"

BundleFixture::BundleFixture(float scale) : display_(scale) {
  forgetLog();
}

void BundleFixture::forgetLog() {
  log_.clear();
  NSSetLogSink([this](std::string_view line) { log_.emplace_back(line); });
}

BundleFixture::~BundleFixture() {
  NSSetLogSink(nullptr);
}

std::shared_ptr<NSWindow> BundleFixture::show(const std::shared_ptr<NSView>& view) {
  auto window = std::make_shared<NSWindow>(NSRect{{200, 300}, view->frame().size}, NSTitledWindowMask,
                                           NSBackingStoreBuffered, false);
  window->setContentView(view);
  window->makeKeyAndOrderFront();
  NSRunLoop::currentRunLoop().runTurn();
  return window;
}

std::shared_ptr<NSWindow> BundleFixture::showInside(NSSize size, const std::shared_ptr<NSView>& view) {
  const auto ground = std::make_shared<NSView>(NSRect{{0, 0}, size});
  const NSSize own = view->frame().size;
  view->setFrame({{(size.width - own.width) / 2, (size.height - own.height) / 2}, own});
  ground->addSubview(view);
  return show(ground);
}

NSPoint BundleFixture::middleOnScreen(const NSView& view) {
  const NSSize size = view.bounds().size;
  return view.window()->convertBaseToScreen(
      view.convertPoint_toView({size.width / 2, size.height / 2}, nullptr));
}

void BundleFixture::press(const NSView& view, unsigned modifiers) {
  display_.press(middleOnScreen(view), modifiers);
}

const Class& Recorder::record() {
  static const Class c = Class::of<Recorder>("Recorder", NSObject::record())
                             .answers<&Recorder::turned>("turned:")
                             .answers<&Recorder::beginAction>("beginAction:")
                             .answers<&Recorder::endAction>("endAction:")
                             .answers<&Recorder::valueChanged>("valueChanged:");
  return c;
}

void Recorder::write(const std::string& line, NSObject* from) {
  lines_.push_back(line);
  sender = from;
}

void Recorder::turned(NSControl* from) {
  write("turned: " + foundation::fixedText(from->floatValue(), 2), from);
}
void Recorder::beginAction(NSObject* from) {
  write("beginAction:", from);
}
void Recorder::endAction(NSObject* from) {
  write("endAction:", from);
}
void Recorder::valueChanged(NSObject* from) {
  write("valueChanged:", from);
}
Lines Recorder::take() {
  return std::exchange(lines_, {});
}

Bitmap drawn(NSView& view, float scale) {
  Bitmap bitmap(view.bounds().size, scale);
  const NSGraphicsContext context(bitmap);
  view.displayRect(view.bounds());
  return bitmap;
}

Rgba at(const Bitmap& bitmap, float x, float y) {
  return bitmap.pixel(static_cast<int>(x * bitmap.scale()),
                      bitmap.physicalHeight() - 1 - static_cast<int>(y * bitmap.scale()));
}

namespace {

/// The edge of a stroke comes out a little different where a clip cuts it.
bool differ(const Rgba& a, const Rgba& b) {
  for (size_t i = 0; i < a.size(); ++i)
    if (std::abs(a[i] - b[i]) > 8) return true;
  return false;
}

}  // namespace

int differences(const Bitmap& a, const Bitmap& b, NSRect where) {
  int count = 0;
  const float step = 1 / a.scale();
  for (float y = NSMinY(where) + step / 2; y < NSMaxY(where); y += step)
    for (float x = NSMinX(where) + step / 2; x < NSMaxX(where); x += step)
      count += differ(at(a, x, y), at(b, x, y));
  return count;
}

NSView* find(NSView& tree, const std::string& className) {
  if (tree.isa().name() == className) return &tree;
  for (const auto& child : tree.subviews())
    if (NSView* found = find(*child, className)) return found;
  return nullptr;
}
