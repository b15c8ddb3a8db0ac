#include "BundleFixture.h"
#include "NSGraphicsContext.h"
#include "TestUnit.h"
#include "jxAppleAUView.h"

namespace {

class IdleCounter : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  void idle() override { ++count; }
  int count = 0;
};

class EditorBaseTests : public BundleFixture {
 protected:
  std::shared_ptr<IdleCounter> editor_ = std::make_shared<IdleCounter>(NSMakeRect(0, 0, 420, 158));
  Unit unit_ = openTestUnit();
};

TEST_F(EditorBaseTests, idleComesWhileTheWindowShowsAnEffect) {
  const size_t timers = NSRunLoop::currentRunLoop().timerCount();
  auto window = show(editor_);
  const auto ticks = [&](double seconds) {
    editor_->count = 0;
    advance(seconds);
    return editor_->count;
  };
  editor_->startTimerWithInterval(0.1);
  EXPECT_EQ(ticks(1.05), 0) << "no effect yet";
  editor_->setAU(jxAUwrapper::wrapperWithAU(unit_.get()));
  EXPECT_EQ(ticks(1), 10);
  editor_->startTimerWithInterval(0.1);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), timers + 1) << "in place of the first";
  EXPECT_EQ(ticks(1.05), 10);

  for (const NSRunLoopMode mode : {NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode}) {
    NSRunLoop::currentRunLoop().setCurrentMode(mode);
    EXPECT_EQ(ticks(1), 10);
  }
  NSRunLoop::currentRunLoop().setCurrentMode(NSDefaultRunLoopMode);

  window->orderOut(nullptr);
  EXPECT_EQ(ticks(1), 0);
  window->makeKeyAndOrderFront();
  EXPECT_EQ(ticks(1), 10) << "the timer went on";

  window.reset();
  EXPECT_EQ(ticks(1), 0);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), timers);
  const std::weak_ptr<IdleCounter> watched = editor_;
  editor_.reset();
  EXPECT_TRUE(watched.expired()) << "nothing holds the editor any more";
}

}  // namespace
