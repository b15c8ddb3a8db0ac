#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "EditorStage.h"
#include "EffectParameters.h"
#include "jxAUCompGraphView.h"
#include "mcmp_CrossoverView.h"

namespace {

class DynamicsEditor : public testing::Test, public EditorStage {
 protected:
  /// The views, among those that outlets hold by these names, that were drawn since the last call; "others"
  /// when something else was.
  std::string drawnOf(const std::string& names) {
    std::string which;
    std::vector<NSRect> damage = takeDamage();
    std::istringstream words(names);
    for (std::string name; words >> name;) {
      const NSRect frame = NSInsetRect(frameInWindow(outlet(name)), -1, -1);
      if (std::erase_if(damage, [&](NSRect rect) { return NSContainsRect(frame, rect); }) > 0)
        which += (which.empty() ? "" : " ") + name;
    }
    return damage.empty() ? which : which + " others";
  }
  unsigned colorIn(const NSView& view, NSPoint inView) const {
    return colorAt(view.convertPoint_toView(inView, nullptr));
  }
};

TEST_F(DynamicsEditor, AChangeDrawsWhatShowsItAndNothingElse) {
  const struct {
    const char *effect, *change;  // none: of all meters
    const char* drawn;
  } rows[] = {{"mcmp", "set 5 -50", "threshold1 graphView1"},
              {"mcmp", "set 8 -50", "threshold4 graphView4"},
              {"mcmp", "set 11 9", "headRoom3 graphView3"},
              {"mcmp", "set 16 9", "eq2 graphView2"},
              {"mcmp", "set 1 3", "postGain"},
              {"mcmp", "", "amountView1 amountView2 amountView3 amountView4"},
              {"dcmp", "", "compAmountView"},
              {"lmtr", "", "amountView"}};
  for (const auto& row : rows) {
    open(row.effect);
    advance(0.5);
    EXPECT_EQ(drawnOf(row.drawn), "") << "nothing plays";
    for (const EffectParameter& p : effectParameters(unit.get()))
      if (!*row.change && !p.isWritable()) unit->setMeter(p.id, (p.minValue + p.maxValue) / 3);
    play(row.change);
    advance(0.05);
    EXPECT_EQ(drawnOf(row.drawn), row.drawn);
  }
}

TEST_F(DynamicsEditor, CrossoversStandOnALogarithmicAxisAboveFunnelsToTheQuarters) {
  open("mcmp");
  auto& view = outlet<mcmp_CrossoverView>("crossoverView");
  const NSRect plot = view.inBounds();
  EXPECT_FLOAT_EQ(view.graphPositionForFreq(22050).x, NSMaxX(plot));
  EXPECT_NEAR(view.frequencyForX(NSMinX(plot) + NSWidth(plot) / 2), std::sqrt(20.0f * 22050.0f), 0.1f);
  const float inBand[] = {50, 300, 1500, 10000};
  for (int top = 0; top < 4; ++top)
    for (int bottom = 0; bottom < 4; ++bottom) {
      const float quarter = NSMinX(plot) + (static_cast<float>(bottom) + 0.5f) * NSWidth(plot) / 4;
      const unsigned above = colorIn(view, {view.graphPositionForFreq(inBand[top]).x, NSMaxY(plot) - 12});
      const unsigned below = colorIn(view, {quarter + 3, NSMinY(plot) + 5});
      int distance = 0;
      for (const int shift : {0, 8, 16})
        distance += std::abs(static_cast<int>(above >> shift & 255) - static_cast<int>(below >> shift & 255));
      EXPECT_EQ(distance < 60, top == bottom) << top << " " << bottom;
    }
}

TEST_F(DynamicsEditor, CurveStandsWhereItsParametersSay) {
  open("dcmp");
  const struct {
    const char* change;
    float in, out;  // on the curve
  } rows[] = {{"set 0 -20; set 1 5; set 2 3; set 3 -27; wait 0.1", -29, -33},
              {"set 0 10; set 1 40; set 2 1; set 3 -120; wait 0.1", 26, 26},
              {"set 0 -20; set 1 5; set 6 10; wait 0.1", 7, -7.3f}};
  auto& graph = outlet<jxAUCompGraphView>("compGraphView");
  for (const auto& row : rows) {
    play(row.change);
    const auto filled = [&](float out) {
      return (colorIn(graph, graph.pointForIndB_outdB(row.in, out)) >> 16) < 0xc0;
    };
    EXPECT_TRUE(filled(row.out - 1.5f)) << row.in;
    EXPECT_FALSE(filled(row.out + 1.5f)) << row.in;
  }
}

TEST_F(DynamicsEditor, TheZeroLinesAreTheStrongOnes) {
  open("mcmp");
  play("set 5 -100; set 15 -20; wait 0.1");
  auto& graph = outlet<jxAUCompGraphView>("graphView1");
  const auto darkness = [&](float in, float out, float dy) {
    const NSPoint p = graph.pointForIndB_outdB(in, out);
    return 255 - static_cast<int>(colorIn(graph, {p.x, p.y + dy}) & 255);
  };
  const int glass = darkness(-90, -20, 0);
  EXPECT_GT(darkness(-90, 0, 0) - glass, (darkness(-90, -40, 0) - glass) * 3 / 2);
  EXPECT_GT(darkness(0, -40, 6) - glass, (darkness(-40, -40, 6) - glass) * 3 / 2);
}

TEST_F(DynamicsEditor, MetersRunWhileAMenuOrAKnobIsHeldAndRestWhileNobodySeesThem) {
  open("dcmp");
  unit->setMeter(1000, 20);
  for (const auto mode : {NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode, NSDefaultRunLoopMode}) {
    NSRunLoop::currentRunLoop().setCurrentMode(mode);
    advance(0.2);
    EXPECT_EQ(takeDamage().size(), 4u);
  }
  const Bitmap before = picture();
  window->orderOut(nullptr);
  unit->setMeter(1000, 0);
  advance(0.2);
  EXPECT_EQ(differences(before, picture(), editor->bounds()), 0);
  window->makeKeyAndOrderFront();
  advance(0.2);
  EXPECT_GT(differences(before, picture(), editor->bounds()), 0);
}

}  // namespace
