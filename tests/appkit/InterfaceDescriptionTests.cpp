#include "InterfaceDescription.h"

#include <gtest/gtest.h>

#include "AppKitClasses.h"
#include "LogLines.h"
#include "NSBox.h"
#include "NSControl.h"
#include "NSException.h"
#include "NSPopUpButton.h"
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
                               .outlet<&TestView::knob>("knob")
                               .optionalOutlet<&TestView::box>("box")
                               .optionalOutlet<&TestView::popUp>("popUp")
                               .optionalOutlet<&TestView::menu>("menu");
    return c;
  }
  const Class& isa() const override { return record(); }
  void setTitle(std::string title) { title_ = std::move(title); }
  void awakeFromNib() {
    awoken.push_back(title_ + (knob ? ", connected" : ""));
    if (menu) menu->addItemWithTitle("awoken");
    if (title_ == "broken") throw NSException("Broken", "broken");
  }

  TestView* knob = nullptr;
  NSBox* box = nullptr;
  NSPopUpButton* popUp = nullptr;
  std::shared_ptr<NSMenu> menu;

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
  LogLines log;
  ASSERT_TRUE(load(R"(<?xml version="1.0"?>
<!-- a comment -->
<interface>
  <view class="TestView" outlet="freshView" title="panel" frame="0 0 100.5 80">
    <view class="NSBox" outlet="box" title="Group &amp; more" frame="10 20 50 40">
      <view class="TestView" outlet="knob" title="inner" hidden="yes" frame="5 6 20 20"/>
    </view>
    <view class="TestView" title="last" frame="-3 10 20 20"/>
    <view class="NSPopUpButton" outlet="popUp" pullsDown="yes" frame="1 2 83 16">
      <item title="interval"/>
      <item title="3/2 fifth"/>
    </view>
  </view>
  <menu outlet="menu">
    <item title="rhythm"/>
    <item title=""/>
  </menu>
</interface>
)"));
  EXPECT_TRUE(log.all().empty());
  EXPECT_EQ(awoken, (std::vector<std::string>{"panel, connected", "inner", "last"}));
  const auto& panel = dynamic_cast<TestView&>(*owner.freshView);
  EXPECT_EQ(panel.frame(), NSMakeRect(0, 0, 100.5f, 80));
  EXPECT_EQ(panel.box->title(), "Group & more");
  EXPECT_EQ(panel.knob->superview(), panel.box->contentView());
  EXPECT_TRUE(panel.knob->isHidden());
  EXPECT_FALSE(panel.subviews().at(1)->isHidden());
  EXPECT_EQ(panel.knob->convertPoint_toView({0, 0}, &panel), (NSPoint{15, 26}));

  EXPECT_TRUE(panel.popUp->pullsDown());
  ASSERT_EQ(panel.popUp->numberOfItems(), 2);
  EXPECT_EQ(panel.popUp->itemAtIndex(1)->title(), "3/2 fifth");
  ASSERT_EQ(panel.menu->numberOfItems(), 3);
  EXPECT_EQ(panel.menu->itemAtIndex(0)->title(), "rhythm");
  EXPECT_EQ(panel.menu->itemAtIndex(2)->title(), "awoken");
}

TEST_F(Description, SaysWhereAndWhatIsWrongAndLeavesNothing) {
  const auto panel = [](const std::string& inside) {
    return "<interface>\n<view class='TestView' outlet='freshView' frame='0 0 9 9'>\n" + inside +
           "\n</view>\n</interface>";
  };
  const std::string knob = "<view class='TestView' outlet='knob' frame='0 0 9 9'/>";
  const auto knobWith = [&](const std::string& attributes) {
    return panel("<view class='TestView' outlet='knob' " + attributes + "/>");
  };
  const auto popUp = [&](const std::string& inside) {
    return panel(knob + "<view class='NSPopUpButton' frame='0 0 83 16'>\n" + inside + "</view>");
  };
  const auto menu = [](const std::string& inside, const std::string& outlet) {
    return "<interface>\n<menu outlet='" + outlet + "'>" + inside + "</menu></interface>";
  };
  const std::string view = "<view class='NSView' frame='0 0 9 9' ";
  const std::string frame = "expected \"x y width height\" with a positive size, no number beyond 4096";
  const std::pair<std::string, std::string> cases[] = {
      {panel("<view class='NoView' frame='0 0 9 9'/>"),
       "3: class \"NoView\", expected the name of a view class"},
      {panel("<view class='TestOwner' frame='0 0 9 9'/>"),
       "3: class \"TestOwner\", expected a class of views"},
      {panel(knob + "\n" + view + "outlet='nob'/>"),
       "4: outlet \"nob\" of TestView, expected one of: knob box popUp menu"},
      {"<interface>\n\n" + view + "outlet='stale'/></interface>",
       "3: outlet \"stale\" of TestOwner, expected one of: freshView panel"},
      {knobWith("frame='0 0 9 9' titel='x'"),
       "3: attribute \"titel\" of TestView, expected one of: class frame outlet hidden title"},
      {knobWith("frame='0 0 9 9' hidden='true'"), "3: hidden=\"true\", expected \"yes\" or \"no\""},
      {knobWith("frame='0 0 9'"), "3: frame \"0 0 9\", " + frame},
      {knobWith("frame='0 0 9 0'"), "3: frame \"0 0 9 0\", " + frame},
      {knobWith("frame='0 0 9pt 9'"), "3: frame \"0 0 9pt 9\", " + frame},
      {panel(""), "2: outlet \"knob\" of TestView is not connected, expected a view with outlet=\"knob\""},
      {panel(knob + "\n" + knob), "4: outlet \"knob\" is connected twice, expected once"},
      {panel(view + "outlet='knob'/>"),
       "3: outlet \"knob\" of TestView does not take an object of class NSView"},
      {"<interface>\n" + view + "outlet='freshView'/>\n" + view + "outlet='panel'/>\n</interface>",
       "3: outlet \"panel\" of TestOwner does not take an object of class NSView"},
      {panel(knob + "\n<veiw/>"), "4: <veiw>, expected <view>"},
      {panel(knob + "\nstray text"), "3: <>, expected <view>"},
      {popUp("<item titel='x'/>"), "4: <item>, expected one attribute: title"},
      {popUp("<item title='x'>y</item>"), "4: something in an <item>, expected nothing"},
      {menu(view + "/>", "menu"), "2: <view>, expected <item>"},
      {menu("", "manu"), "2: outlet \"manu\" of TestOwner, expected one of: freshView panel"},
      {menu("", "panel"), "2: outlet \"panel\" of TestOwner does not take an object of class NSMenu"},
      {"\n<interfaces/>", "2: <interfaces>, expected <interface>"},
      {"<interface>\n\n</view>\n</interface>", "3: Start-end tags mismatch, expected XML"},
      {"", "1: No document element found, expected XML"},
  };
  for (const auto& [text, message] : cases) {
    LogLines log;
    EXPECT_FALSE(load(text)) << text;
    EXPECT_EQ(log.all(), std::vector<std::string>{scratch.file("Resources/test.xml") + ":" + message});
    EXPECT_TRUE(!owner.freshView && !owner.panel && awoken.empty() && alive == 0) << text;
  }
  LogLines log;
  EXPECT_FALSE(loadNibNamed_owner("absent", owner));
  EXPECT_EQ(log.count("absent.xml: no such interface description"), 1);
}

TEST_F(Description, AFailureLeavesWhatTheOwnerHadBefore) {
  const auto before = owner.freshView = std::make_shared<NSView>(NSMakeRect(0, 0, 1, 1));
  LogLines log;
  EXPECT_FALSE(
      load("<interface><view class='NSView' outlet='freshView' frame='0 0 9 9'/>"
           "<view class='NSView' outlet='panel' frame='0 0 9 9'/></interface>"));
  EXPECT_EQ(owner.freshView, before);
  EXPECT_THROW(
      load("<interface><view class='TestView' outlet='panel' frame='0 0 9 9'>"
           "<view class='TestView' outlet='knob' title='broken' frame='0 0 9 9'/></view></interface>"),
      NSException);
  EXPECT_EQ(owner.panel, nullptr);
  EXPECT_EQ(alive, 0);
}
