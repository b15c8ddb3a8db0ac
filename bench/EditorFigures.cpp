#include <cmath>

#include "BenchEditor.h"
#include "CairoTape.h"
#include "EditorKind.h"
#include "Figures.h"
#include "ImpulseAUwrapper.h"
#include "WorkTime.h"

namespace {

constexpr double turn = 0.05;       // seconds between two looks at a parameter
constexpr float atWork = 0.7f;      // part of their ranges where parameters stand, so that nothing is flat
constexpr int shortCycle = 8;       // steps up and down
constexpr float pointsPerStep = 6;  // of a drag

/// Something that an editor does again and again, in a cycle of steps.
struct Activity {
  int steps = 1;
  std::function<void(int)> step;
  std::function<void(int)> prepare = [](int) {};  // each step; does not count
  int before = 1;                                 // cycles until one is like the other
  int measurements = 0;                           // of the effect, in each step
  bool drawsAll = false;
  std::function<void()> beforeFloor = [] {};
};

std::vector<uint32_t> pixelsOf(const Bitmap& bitmap) {
  std::vector<uint32_t> pixels;
  for (int y = 0; y < bitmap.physicalHeight(); ++y) {
    const auto row = bitmap.row(y);
    pixels.insert(pixels.end(), row.begin(), row.end());
  }
  return pixels;
}

/// Whether the tape alone brings the window's picture back: no call that draws has been missed.
bool drawsTheSame(CairoTape& tape, const BenchEditor& editor) {
  const Bitmap& bitmap = *editor.window->snapshot();
  const std::vector<uint32_t> drawn = pixelsOf(bitmap);
  cairo_t* const eraser = cairo_create(bitmap.surface());
  cairo_paint(eraser);
  cairo_destroy(eraser);
  tape.play();
  return pixelsOf(bitmap) == drawn;
}

void compare(benchmark::State& state, const EditorKind& kind, BenchEditor& editor, const Activity& activity) {
  const auto cycle = [&](const auto& each) {
    for (int i = 0; i < activity.steps; ++i) {
      activity.prepare(i);
      each([&] { activity.step(i); });
    }
  };
  for (int i = 0; i < activity.before; ++i) cycle([](const auto& step) { step(); });
  CairoTape tape;
  cycle([&](const auto& step) { tape.record(step); });
  if (tape.isEmpty()) return state.SkipWithError("nothing was drawn");
  if (activity.drawsAll && !drawsTheSame(tape, editor))
    return state.SkipWithError("played again, the cairo calls draw another picture");
  std::optional<MeasurementFloor> measurement;
  if (kind.measurement && activity.measurements)
    measurement.emplace(kind.code, *kind.measurement, editor.effect());

  const auto figure = [&] {
    double seconds = 0;
    cycle([&](const auto& step) { seconds += secondsOf(step); });
    return seconds;
  };
  const auto floor = [&] {
    activity.beforeFloor();
    const double seconds = secondsOf([&] {
      tape.play();
      for (int i = 0; measurement && i < activity.steps * activity.measurements; ++i) measurement->run();
    });
    tape.rewind();
    return seconds;
  };
  takeTurns(state, figure, floor);
}

Activity opening(BenchEditor& editor, const EditorKind&) {
  // Both find the memory that an editor has just given back.
  return {.step = [&](int) { editor.openEditor(); },
          .prepare = [&](int) { editor.closeEditor(); },
          .measurements = 1,
          .beforeFloor = [&] { editor.closeEditor(); }};
}

Activity fullRedraw(BenchEditor& editor, const EditorKind&) {
  return {.step =
              [&](int) {
                editor.editor->setNeedsDisplay(true);
                BenchEditor::turn();
              },
          .drawsAll = true};
}

Activity tick(BenchEditor& editor, const EditorKind& kind) {
  Activity activity{.steps = static_cast<int>(std::lround(1 / kind.tick)),
                    .step = [&editor, &kind](int) { editor.advance(kind.tick); }};
  if (kind.moves == EditorKind::hasMeters) {
    activity.prepare = [&editor, &kind](int) { editor.hear(kind.tick); };
    activity.before = 10;  // until the meters are full
  }
  return activity;
}

Activity drag(BenchEditor& editor, const EditorKind&) {
  for (const EffectParameter& p : editor.effect().writableParameters()) editor.set(p.id, partOf(p, atWork));
  editor.advance(2 * turn);
  editor.press(*find(*editor.editor, "jxAURotaryKnob"));
  return {.steps = shortCycle,
          .step = [&](int) { editor.advance(turn); },
          .prepare = [&](int i) { editor.moveBy(0, i < shortCycle / 2 ? pointsPerStep : -pointsPerStep); },
          .measurements = 1};
}

Activity parameterToPicture(BenchEditor& editor, const EditorKind& kind) {
  const auto& all = editor.effect().parameters();
  const EffectParameter parameter =
      *std::find_if(all.begin(), all.end(), [&](const auto& p) { return p.id == kind.parameter; });
  return {.steps = shortCycle,
          .step =
              [&editor, parameter](int i) {
                const int height = i < shortCycle / 2 ? i : shortCycle - i;
                editor.set(parameter.id, partOf(parameter, 0.3f + 0.1f * static_cast<float>(height)));
                editor.advance(turn);
              },
          .measurements = 1};
}

void compareMeasurement(benchmark::State& state, const EditorKind& kind) {
  EffectBench effect(kind.code);
  for (const EffectParameter& p : effect.writableParameters()) effect.set(p.id, partOf(p, atWork));
  MeasurementFloor floor(kind.code, *kind.measurement, effect);
  ImpulseAUwrapper renderer(effect.unit(), kind.measurement->sampleRate, kind.measurement->order,
                            kind.measurement->outputs == 2);
  const auto measure = [&] {
    benchmark::DoNotOptimize(kind.measurement->isSpectrum ? renderer.freqResponse()
                                                          : renderer.renderImpulse());
  };
  takeTurns(
      state, [&] { return secondsOf(measure); }, [&] { return secondsOf([&] { floor.run(); }); });
}

}  // namespace

void addEditorFigures(RatioTable& table) {
  for (const EditorKind& kind : editorKinds()) {
    const auto add = [&](const char* figure, double goal,
                         Activity (*activity)(BenchEditor&, const EditorKind&)) {
      for (const int scale : {1, 2})
        table.add({{kind.code, figure, scale, goal}}, [&kind, scale, activity](benchmark::State& state) {
          BenchEditor editor(kind.code, static_cast<float>(scale));
          compare(state, kind, editor, activity(editor, kind));
        });
    };
    add("open", 0, opening);
    add("full redraw", 1.5, fullRedraw);
    if (kind.moves == EditorKind::hasMeters) add("tick of the meters", 2, tick);
    if (kind.moves == EditorKind::hasRooms) add("tick of the rooms", 2, tick);
    add("tick of a dragged knob", 2, drag);
    add("parameter to picture", 1.3, parameterToPicture);
    if (kind.measurement)
      table.add({{kind.code, "measurement", 0, 1.5}},
                [&kind](benchmark::State& state) { compareMeasurement(state, kind); });
  }
}
