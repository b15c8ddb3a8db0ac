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
                               .answers<&Instrument::tune>("tune:");
    return c;
  }
  const Class& isa() const override { return record(); }

  void play() { heard.push_back("play"); }
  void tune(Instrument* other) { heard.push_back(other ? "tune" : "tune alone"); }

  std::vector<std::string> heard;
};

class Drum : public Instrument {
 public:
  const Class& isa() const override {
    static const Class c = Class::of<Drum>("Drum", Instrument::record()).answers<&Drum::playLoud>("play");
    return c;
  }
  void playLoud() { heard.push_back("boom"); }
};

constexpr auto selector = NSSelectorFromString;

}  // namespace

TEST(Messages, ArgumentsAreDroppedPassedAndNarrowedByTheMostDerivedOperation) {
  const auto a = std::make_shared<Instrument>();
  const auto stranger = std::make_shared<NSObject>();
  a->performSelector_withObject(selector("play"), a.get());
  a->performSelector_withObject(selector("tune:"), a.get());
  a->performSelector(selector("tune:"));
  a->performSelector_withObject(selector("tune:"), stranger.get());
  EXPECT_EQ(a->heard, (std::vector<std::string>{"play", "tune", "tune alone", "tune alone"}));

  const auto drum = std::make_shared<Drum>();
  drum->performSelector(selector("play"));
  drum->performSelector(selector("tune:"));
  EXPECT_EQ(drum->heard, (std::vector<std::string>{"boom", "tune alone"}));
}

TEST(Messages, WhoDoesNotAnswerIsSkippedOrReportedAndThrown) {
  const auto drum = std::make_shared<Drum>();
  EXPECT_FALSE(NSPerformIfAnswered(drum.get(), selector("dance"), nullptr));
  EXPECT_TRUE(NSPerformIfAnswered(drum.get(), selector("play"), nullptr));
  EXPECT_EQ(drum->heard.size(), 1u);
  LogLines lines;
  EXPECT_THROW(drum->performSelector(selector("dance")), NSException);
  EXPECT_EQ(lines.count("dance"), 1);
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
