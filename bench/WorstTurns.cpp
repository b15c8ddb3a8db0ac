#include <cmath>
#include <limits>

#include "Automation.h"
#include "BenchEditor.h"
#include "CairoTape.h"
#include "EditorKind.h"
#include "Figures.h"
#include "WorkTime.h"

namespace {

constexpr int scale = 1;
constexpr double interval = 0.05;  // between two values of each parameter
constexpr int steps = 1200;        // in a minute
constexpr int minutes = 2;         // alike; of each turn the least time counts
constexpr int redraws = 20;

/// Seconds of each turn of the run loop while every parameter is automated, and meters have something to
/// show.
std::vector<double> minuteOfTurns(BenchEditor& editor, const EditorKind& kind) {
  const auto parameters = editor.effect().writableParameters();
  std::vector<double> turns;
  for (int step = 0; step < steps; ++step) {
    if (kind.moves == EditorKind::hasMeters) editor.hear(interval);
    for (size_t i = 0; i < parameters.size(); ++i)
      editor.set(parameters[i].id, automated(parameters[i], i, step));
    const double end = editor.clock.now() + interval;
    while (editor.clock.waitUntil(end, NSRunLoop::currentRunLoop()))
      turns.push_back(secondsOf(BenchEditor::turn));
  }
  return turns;
}

double bareRedraw(BenchEditor& editor) {
  CairoTape tape;
  tape.record([&] {
    editor.editor->setNeedsDisplay(true);
    BenchEditor::turn();
  });
  double least = std::numeric_limits<double>::infinity();
  for (int i = 0; i < redraws; ++i) {
    least = std::min(least, secondsOf([&] { tape.play(); }));
    tape.rewind();
  }
  return least;
}

void worstTurns(benchmark::State& state, const EditorKind& kind) {
  std::vector<double> least;
  double floor = std::numeric_limits<double>::infinity();
  for (auto _ : state) {
    for (int minute = 0; minute < minutes; ++minute) {
      BenchEditor editor(kind.code, scale);
      const std::vector<double> turns = minuteOfTurns(editor, kind);
      floor = std::min(floor, bareRedraw(editor));
      if (least.empty()) least = turns;
      if (turns.size() != least.size()) return state.SkipWithError("the minutes differ in their turns");
      std::transform(turns.begin(), turns.end(), least.begin(), least.begin(),
                     [](double a, double b) { return std::min(a, b); });
    }
    state.SetIterationTime(1);
  }
  std::sort(least.begin(), least.end());
  const auto rank = static_cast<size_t>(std::ceil(0.999 * static_cast<double>(least.size())));
  state.counters["99.9"] = least[rank - 1];
  state.counters["longest"] = least.back();
  state.counters["floor"] = floor;
}

}  // namespace

void addWorstTurns(RatioTable& table) {
  for (const EditorKind& kind : editorKinds())
    table.add(
        {{kind.code, "turns while all is automated, 99.9 %", scale, 0, "", "99.9"},
         {kind.code, "turns while all is automated, longest", scale, 0, "", "longest"}},
        [&kind](benchmark::State& state) { worstTurns(state, kind); }, RatioTable::Runs::once);
}
