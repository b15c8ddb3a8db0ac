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

TEST_F(EditorBaseTests, rectangles) {
  EXPECT_EQ(jxAppleAUView::standardRectExpand(NSMakeRect(10, 10, 100, 50)), NSMakeRect(13, 5, 94, 70));
  EXPECT_EQ(jxAppleAUView::rectExpand_left_top_right_bottom(NSMakeRect(10, 20, 30, 40), 1, 2, 4, 8),
            NSMakeRect(9, 12, 35, 50));
  const NSView first(NSMakeRect(10, 20, 30, 40)), last(NSMakeRect(100, 25, 50, 60));
  EXPECT_EQ(jxAppleAUView::sectionRectFrom_to(first, last), NSMakeRect(10, 20, 140, 65));
  EXPECT_EQ(jxAppleAUView::sectionRectFrom_to(first, first), first.frame());
}

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
