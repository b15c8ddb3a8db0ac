#include "BenchStage.h"

#include <algorithm>

namespace {

constexpr NSTimeInterval sameInstant = 1e-9;  // sums of the same steps may differ by their rounding

}  // namespace

BenchStage::BenchStage(float scale) : previous_(NSDate::setClock(this)), display_(scale) {}

BenchStage::~BenchStage() {
  NSDate::setClock(previous_);
}

std::shared_ptr<NSWindow> BenchStage::show(const std::shared_ptr<NSView>& view) {
  auto window = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                           NSBackingStoreBuffered, false);
  window->setContentView(view);
  window->makeKeyAndOrderFront();
  return window;
}

bool BenchStage::waitUntil(NSTimeInterval end) {
  const NSTimeInterval due = NSRunLoop::currentRunLoop().nextDue();
  const bool isBefore = due <= end + sameInstant;
  now_ = std::max(now_, isBefore ? due : end);
  return isBefore;
}

void BenchStage::turn() {
  NSRunLoop::currentRunLoop().runTurn();
  for (OffscreenWindow* window : display_.windows()) window->takePresented();
}

void BenchStage::advance(NSTimeInterval seconds) {
  const NSTimeInterval end = now_ + seconds;
  while (waitUntil(end)) turn();
}
