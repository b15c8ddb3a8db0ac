#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Class.h"
#include "LogLines.h"
#include "NSException.h"

namespace {

class Instrument : public NSObject {
 public:
  static const Class& record() {
    static const Class c = Class::of<Instrument>("Instrument", NSObject::record())
                               .answers<&Instrument::play>("play")
                               .answers<&Instrument::tune>("tune:")
                               .answers<&Instrument::mayPlay>("mayPlay:with:")
                               .outlet<&Instrument::player>("player");
    return c;
  }
  const Class& isa() const override { return record(); }

  void play() { heard.push_back("play"); }
  void tune(Instrument* other) { heard.push_back(other ? "tune" : "tune alone"); }
  bool mayPlay(Instrument* first, std::shared_ptr<Instrument> second) {
    return first == this && second.get() == this;
  }

  std::vector<std::string> heard;
  Instrument* player = nullptr;
};

class Drum : public Instrument {
 public:
  static const Class& record() {
    static const Class c = Class::of<Drum>("Drum", Instrument::record()).answers<&Drum::playLoud>("play");
    return c;
  }
  const Class& isa() const override { return record(); }
  void playLoud() { heard.push_back("boom"); }
};

SEL selector(const char* name) {
  return NSSelectorFromString(name);
}

}  // namespace

TEST(Messages, ArgumentsAreDroppedPassedAndNarrowed) {
  const auto a = std::make_shared<Instrument>();
  const auto stranger = std::make_shared<NSObject>();
  a->performSelector_withObject(selector("play"), a.get());
  a->performSelector_withObject(selector("tune:"), a.get());
  a->performSelector(selector("tune:"));
  a->performSelector_withObject(selector("tune:"), stranger.get());
  EXPECT_EQ(a->heard, (std::vector<std::string>{"play", "tune", "tune alone", "tune alone"}));

  EXPECT_TRUE(a->performSelector_withObject_withObject(selector("mayPlay:with:"), a.get(), a.get()));
  EXPECT_FALSE(a->performSelector_withObject_withObject(selector("mayPlay:with:"), a.get(), nullptr));
}

TEST(Messages, TheMostDerivedOperationAnswers) {
  const auto drum = std::make_shared<Drum>();
  drum->performSelector(selector("play"));
  drum->performSelector(selector("tune:"));
  EXPECT_EQ(drum->heard, (std::vector<std::string>{"boom", "tune alone"}));
  EXPECT_TRUE(drum->isKindOfClass(Instrument::record()));
  EXPECT_FALSE(std::make_shared<Instrument>()->isKindOfClass(Drum::record()));
}

TEST(Messages, WhoDoesNotAnswerIsSkippedOrReportedAndThrown) {
  const auto drum = std::make_shared<Drum>();
  EXPECT_FALSE(NSPerformIfAnswered(nullptr, selector("play"), nullptr));
  EXPECT_FALSE(NSPerformIfAnswered(drum.get(), selector("dance"), nullptr));
  EXPECT_TRUE(NSPerformIfAnswered(drum.get(), selector("play"), nullptr));
  EXPECT_EQ(drum->heard.size(), 1u);
  LogLines lines;
  EXPECT_THROW(drum->performSelector(selector("dance")), NSException);
  EXPECT_EQ(lines.all().size(), 1u);
  EXPECT_EQ(lines.count("-[Drum performSelector:withObject:]"), 1);
  EXPECT_EQ(lines.count("dance"), 1);
}

TEST(Messages, OutletsAreInheritedAndTakeOnlyTheirClass) {
  const auto drum = std::make_shared<Drum>();
  const Class::Outlet* outlet = Drum::record().outletNamed("player");
  ASSERT_NE(outlet, nullptr);
  EXPECT_FALSE(outlet->connect(*drum, std::make_shared<NSObject>()));
  EXPECT_EQ(drum->player, nullptr);
  EXPECT_TRUE(outlet->connect(*drum, drum));
  EXPECT_EQ(outlet->connected(*drum), drum.get());
}

TEST(ClassList, AModuleTakesOnlyItsOwnRecordsAway) {
  static const Class other = Class::of<Drum>("Instrument", NSObject::record());
  const Class* const first[] = {&Instrument::record()};
  const Class* const second[] = {&other};
  Class::addToList(first);
  Class::addToList(second);
  Class::removeFromList(first);
  EXPECT_EQ(Class::named("Instrument"), &other);
  Class::removeFromList(second);
  EXPECT_EQ(Class::named("Instrument"), nullptr);
}
