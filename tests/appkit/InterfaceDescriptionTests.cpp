#include "InterfaceDescription.h"

#include <gtest/gtest.h>

#include "AppKitClasses.h"
#include "LogLines.h"
#include "NSBox.h"
#include "NSControl.h"
#include "ScratchBundle.h"

namespace {

std::vector<std::string> awoken;
int alive = 0;

class TestView : public NSControl {
 public:
  explicit TestView(NSRect frame) : NSControl(frame) { ++alive; }
  ~TestView() override { --alive; }
  static const Class& record() {
    static const Class c = Class::of<TestView>("TestView", NSControl::record())
                               .answers<&TestView::awakeFromNib>("awakeFromNib")
                               .attribute<&TestView::setTitle>("title")
                               .outlet<&TestView::knob>("knob");
    return c;
  }
  const Class& isa() const override { return record(); }
  void setTitle(std::string title) { title_ = std::move(title); }
  void awakeFromNib() { awoken.push_back(title_ + (knob ? ", connected" : "")); }

  TestView* knob = nullptr;

 private:
  std::string title_;
};

class TestOwner : public NSObject {
 public:
  static const Class& record() {
    static const Class c = Class::of<TestOwner>("TestOwner", NSObject::record())
                               .outlet<&TestOwner::freshView>("freshView")
                               .optionalOutlet<&TestOwner::panel>("panel");
    return c;
  }
  const Class& isa() const override { return record(); }

  std::shared_ptr<NSView> freshView;
  TestView* panel = nullptr;
};

class Description : public testing::Test {
 protected:
  Description() {
    NSRegisterAppKitClasses();
    scratch.write("Info.xml", ScratchBundle::info("TestOwner"));
    bundle = scratch.open(error);
    bundle->loadLinked([](std::vector<const Class*>& classes) {
      classes.insert(classes.end(), {&TestView::record(), &TestOwner::record()});
    });
    awoken.clear();
    alive = 0;
  }

  bool load(const std::string& text) {
    scratch.write("Resources/test.xml", text);
    return loadNibNamed_owner("test", owner);
  }

  ScratchBundle scratch;
  std::string error;
  std::shared_ptr<NSBundle> bundle;
  TestOwner owner;
};

}  // namespace

TEST_F(Description, MakesTheTreeThenConnectsThenAwakesParentsFirst) {
  ASSERT_TRUE(load(R"(<interface>
  <view class="TestView" outlet="freshView" title="panel" frame="0 0 100.5 80">
    <view class="NSBox" frame="10 20 50 40">
      <view class="TestView" outlet="knob" title="inner" hidden="yes" frame="5 6 20 20"/>
    </view>
    <view class="TestView" title="last" frame="-3 10 20 20"/>
  </view>
</interface>
)"));
  EXPECT_EQ(awoken, (std::vector<std::string>{"panel, connected", "inner", "last"}));
  const auto& panel = dynamic_cast<TestView&>(*owner.freshView);
  EXPECT_EQ(panel.frame(), NSMakeRect(0, 0, 100.5f, 80));
  const auto& box = dynamic_cast<NSBox&>(*panel.subviews().at(0));
  EXPECT_EQ(panel.knob->superview(), box.contentView());
  EXPECT_TRUE(panel.knob->isHidden());
  EXPECT_FALSE(panel.subviews().at(1)->isHidden());
}

TEST_F(Description, SaysWhereAndWhatIsWrongAndLeavesNothing) {
  const auto panel = [](const std::string& inside) {
    return "<interface>\n<view class='TestView' outlet='freshView' frame='0 0 9 9'>\n" + inside +
           "\n</view>\n</interface>";
  };
  const std::string knob = "<view class='TestView' outlet='knob' frame='0 0 9 9'/>";
  const std::string view = "<view class='NSView' frame='0 0 9 9' ";
  const std::pair<std::string, std::string> cases[] = {
      {panel("<view class='NoView' frame='0 0 9 9'/>"),
       "3: class \"NoView\", expected the name of a view class"},
      {panel(knob + "\n" + view + "outlet='nob'/>"), "4: outlet \"nob\" of TestView, expected one of: knob"},
      {panel("<view class='TestView' frame='0 0 9 9' titel='x'/>"),
       "3: attribute \"titel\" of TestView, expected one of: class frame outlet hidden title"},
      {panel("<view class='TestView' frame='0 0 9pt 9'/>"),
       "3: frame \"0 0 9pt 9\", expected \"x y width height\" with a positive size, no number beyond 4096"},
      {panel(""), "2: outlet \"knob\" of TestView is not connected, expected a view with outlet=\"knob\""},
      {panel(knob + "\n" + knob), "4: outlet \"knob\" is connected twice, expected once"},
      {panel(view + "outlet='knob'/>"),
       "3: outlet \"knob\" of TestView does not take an object of class NSView"},
      {"<interface>\n\n</view>\n</interface>", "3: Start-end tags mismatch, expected XML"},
  };
  for (const auto& [text, message] : cases) {
    LogLines log;
    EXPECT_FALSE(load(text)) << text;
    EXPECT_EQ(log.all(), std::vector<std::string>{scratch.file("Resources/test.xml") + ":" + message});
    EXPECT_TRUE(!owner.freshView && !owner.panel && awoken.empty() && alive == 0) << text;
  }
}

TEST_F(Description, AFailureLeavesWhatTheOwnerHadBefore) {
  const auto before = owner.freshView = std::make_shared<NSView>(NSMakeRect(0, 0, 1, 1));
  LogLines log;
  EXPECT_FALSE(
      load("<interface><view class='NSView' outlet='freshView' frame='0 0 9 9'/>"
           "<view class='NSView' outlet='panel' frame='0 0 9 9'/></interface>"));
  EXPECT_EQ(owner.freshView, before);
}
