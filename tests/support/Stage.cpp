#include "Stage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "Class.h"
#include "NSTextField.h"

namespace {

/// What `part` of a control means; null when it has none.
NSView* partOf(NSView& control, const std::string& part) {
  for (NSTextField* field : all<NSTextField>(control))
    if (part == "field" && field->acceptsTyping()) return field;
  return find(control, part == "knob" ? "jxAURotaryKnob" : part == "menu" ? "NSPopUpButton" : "");
}

}  // namespace

Stage::Stage(float scale) : display(scale), previousLog_(NSSetLogSink(nullptr)) {
  forgetLog();
}

Stage::~Stage() {
  NSSetLogSink(std::move(previousLog_));
}

void Stage::advance(double seconds) {
  clock.advance(NSRunLoop::currentRunLoop(), seconds);
}

void Stage::forgetLog() {
  log.clear();
  NSSetLogSink([this](std::string_view line) { log.emplace_back(line); });
}

void Stage::put(const std::shared_ptr<NSView>& view) {
  window = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                      NSBackingStoreBuffered, false, &display);
  window->setContentView(view);
  window->setInitialFirstResponder(view.get());
  window->makeKeyAndOrderFront();
}

void Stage::show(const std::shared_ptr<NSView>& view) {
  put(view);
  advance(0.2);
  takeDamage();
}

NSView& Stage::viewNamed(std::string& name) const {
  const auto cut = [&name](const char* before) {
    const size_t end = std::min(name.find_first_of(before), name.size());
    const std::string part = name.substr(0, end);
    name.erase(0, end);
    return part;
  };
  NSView* view = window->contentView();
  if (const std::string outlet = cut(".#@+"); !outlet.empty()) view = &outletOf(*view, outlet);
  if (name.starts_with('.')) view = partOf(*view, cut("#@+").substr(1));
  if (!view) throw std::invalid_argument("there is no such part");
  return *view;
}

NSPoint Stage::place(const std::string& name) {
  std::string rest = name;
  const NSPoint middle = middleOf(viewNamed(rest));
  float dx = 0, dy = 0;
  if (!rest.empty() && std::sscanf(rest.c_str(), "+%f,%f", &dx, &dy) != 2)
    throw std::invalid_argument("place \"" + name + "\"");
  return {middle.x + dx, middle.y + dy};
}

NSPoint Stage::middleOf(const NSView& view) {
  const NSSize size = view.bounds().size;
  return view.convertPoint_toView({size.width / 2, size.height / 2}, nullptr);
}

unsigned Stage::colorAt(NSPoint inWindow) const {
  const auto [r, g, b, a] = at(*window->snapshot(), inWindow.x, inWindow.y);
  return static_cast<unsigned>(r) << 16 | static_cast<unsigned>(g) << 8 | b;
}

Bitmap drawn(NSView& view, float scale) {
  return painted(view.bounds().size, scale, [&] { view.displayRect(view.bounds()); });
}

int differences(const Bitmap& a, const Bitmap& b, NSRect where) {
  // The edge of a stroke comes out a little different where a clip cuts it.
  const auto isLike = [](int one, int other) { return std::abs(one - other) <= 8; };
  int count = 0;
  const float step = 1 / a.scale();
  for (float y = NSMinY(where) + step / 2; y < NSMaxY(where); y += step)
    for (float x = NSMinX(where) + step / 2; x < NSMaxX(where); x += step)
      count += !std::ranges::equal(at(a, x, y), at(b, x, y), isLike);
  return count;
}

NSView& outletOf(NSObject& owner, const std::string& name) {
  const Class::Outlet* row = owner.isa().outletNamed(name);
  auto* view = row ? dynamic_cast<NSView*>(row->connected(owner)) : nullptr;
  if (!view) throw std::invalid_argument(owner.isa().name() + " has no outlet \"" + name + "\"");
  return *view;
}

NSView* find(NSView& tree, const std::string& className) {
  for (NSView* view : all<NSView>(tree))
    if (view->isa().name() == className) return view;
  return nullptr;
}
