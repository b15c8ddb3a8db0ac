#include <algorithm>

#include "AUEventListener.h"
#include "EffectBench.h"
#include "Figures.h"
#include "Stage.h"
#include "WorkTime.h"
#include "jxAUCompAmountView.h"
#include "jxAUHandleGraphDisplay.h"
#include "jxAUParam.h"

namespace {

constexpr double turn = 0.05;
constexpr int tries = 20;

/// Makes something with that many parts; what it answers does the work once.
using Make = std::function<TimedWork(Stage& stage, int)>;

double usual(const Make& make, int number) {
  Stage stage(1);
  const TimedWork work = make(stage, number);
  std::vector<double> seconds;
  for (int i = 0; i < tries; ++i) seconds.push_back(work());
  std::sort(seconds.begin(), seconds.end());
  return seconds[tries / 4];
}

// ---- Bindings: each to an effect of its own.

struct Listener : NSObject {
  const Class& isa() const override { return record(); }
  static const Class& record() {
    static const Class c = Class::of<Listener>("BenchListener", NSObject::record())
                               .answers<&Listener::valueChanged>("valueChanged:");
    return c;
  }
  void valueChanged(NSObject*) { ++heard; }
  int heard = 0;
};

struct Bindings {
  explicit Bindings(int number) : listener(std::make_shared<Listener>()) {
    for (int i = 0; i < number; ++i) effects.push_back(openEffect(registeredEffect("sdly")));
  }
  void bind() {
    for (const auto& effect : effects)
      bound.push_back(std::make_shared<jxAUParam>(AudioUnitParameter{effect.get(), 0}, listener.get(),
                                                  NSSelectorFromString("valueChanged:")));
  }
  void change(AudioUnit effect) {
    const AudioUnitParameter parameter{effect, 0};
    AUParameterSet(nullptr, nullptr, &parameter, value = value < 1000 ? value + 1 : 0, 0);
  }
  std::shared_ptr<Listener> listener;
  std::vector<EffectInstance> effects;
  std::vector<std::shared_ptr<jxAUParam>> bound;
  float value = 0;
};

TimedWork bindings(Stage&, int number) {
  return [all = std::make_shared<Bindings>(number)] {
    return secondsOf([&] {
      all->bind();
      all->bound.clear();
    });
  };
}

TimedWork changes(Stage& stage, int number, bool ofAll) {
  const auto all = std::make_shared<Bindings>(number);
  all->bind();
  return [all, ofAll, &stage] {
    return secondsOf([&] {
      for (const auto& effect : all->effects)
        if (ofAll || effect == all->effects.back()) all->change(effect.get());
      stage.advance(turn);
    });
  };
}

// ---- Views.

TimedWork redraws(Stage& stage, const std::shared_ptr<NSView>& view, const std::function<void()>& change) {
  stage.put(view);
  Stage::turn();
  return [change] {
    return secondsOf([&] {
      change();
      Stage::turn();
    });
  };
}

struct HandleGraph : jxAUHandleGraphDisplay {
  explicit HandleGraph(int number) : jxAUHandleGraphDisplay(NSMakeRect(0, 0, 400, 200)) {
    for (int i = 0; i < number; ++i) {
      addHandleWithColor_mode(orangeHandle(), HandleModeBand);
      setPoint_width_forHandle({40 + 300 * static_cast<float>(i) / static_cast<float>(number), 100}, 20,
                               static_cast<unsigned>(i));
    }
    awakeFromNib();
  }
  void drawRect(NSRect dirty) override {
    jxAUHandleGraphDisplay::drawRect(dirty);
    drawHandles(dirty);
    drawGlow(dirty);
  }
};

TimedWork handles(Stage& stage, int number) {
  const auto graph = std::make_shared<HandleGraph>(number);
  return redraws(stage, graph, [&graph = *graph] { graph.setNeedsDisplay(true); });
}

TimedWork meterSamples(Stage& stage, int number) {
  const auto meter = std::make_shared<jxAUCompAmountView>(NSMakeRect(0, 0, 316, 124));
  const auto effect = std::make_shared<EffectBench>("lmtr");
  meter->awakeFromNib();
  // Any parameter that moves will do.
  meter->startWatchingAUparam_numSamples({effect->unit(), 2}, number);
  const auto sample = [meter = meter.get(), effect, i = 0]() mutable {
    effect->set(2, static_cast<float>(++i % 20));
    meter->update();
  };
  for (auto [i, take] = std::pair(0, sample); i < number; ++i) take();
  return redraws(stage, meter, sample);
}

/// A side of so many hundred points.
TimedWork windowSize(Stage& stage, int side) {
  const float points = 100 * static_cast<float>(side);
  const auto panel = std::make_shared<jxAUGraphDisplay>(NSMakeRect(0, 0, points, points));
  panel->awakeFromNib();
  return redraws(stage, panel, [&panel = *panel] { panel.setNeedsDisplay(true); });
}

TimedWork partOfWindow(Stage& stage, int side) {
  const float points = 100 * static_cast<float>(side);
  const auto panel = std::make_shared<jxAUGraphDisplay>(NSMakeRect(0, 0, points, points));
  panel->awakeFromNib();
  return redraws(stage, panel,
                 [&panel = *panel] { panel.setNeedsDisplayInRect(NSMakeRect(40, 40, 41, 41)); });
}

}  // namespace

void addGrowth(RatioTable& table) {
  const auto add = [&table](const char* what, const Make& make, int one, int many, double expected,
                            double tolerance) {
    const std::string figure = std::string(what) + " " + std::to_string(many) + " / " + std::to_string(one);
    char note[32];
    std::snprintf(note, sizeof note, "%s: %g×", expected == 1 ? "constant" : "linear", expected);
    table.add(
        {{"growth", figure, 0, tolerance * expected, note}},
        [=](benchmark::State& state) {
          takeTurns(
              state, [&] { return usual(make, many); }, [&] { return usual(make, one); });
        },
        RatioTable::Runs::once);
  };
  const auto constant = [&](const char* what, const Make& make, std::initializer_list<int> numbers) {
    for (const int many : numbers) add(what, make, 1, many, 1, 2);
  };
  const auto linear = [&](const char* what, const Make& make) {
    for (const int many : {10, 100, 1000}) add(what, make, 1, many, many, 1.5);
  };
  constant("bindings, one changes:", [](Stage& stage, int number) { return changes(stage, number, false); },
           {10, 100, 1000});
  linear("bindings, all change:", [](Stage& stage, int number) { return changes(stage, number, true); });
  linear("bindings, made and gone:", bindings);
  linear("handles, redraw:", handles);
  linear("meter samples, tick:", meterSamples);
  for (const int side : {2, 4, 8}) add("window side, redraw:", windowSize, 1, side, side * side, 1.5);
  constant("window side, small redraw:", partOfWindow, {2, 4, 8});
}
