#include <benchmark/benchmark.h>
#include <cairo.h>

#include "AUEventListener.h"
#include "BenchEditor.h"
#include "NSGraphicsContext.h"

namespace {

void openEditor(benchmark::State& state) {
  const VirtualClock clock;
  const OffscreenDisplay display;
  const AudioUnit unit = openEffect("sdly");
  for (auto _ : state) BenchEditor::makeView(unit);
  CloseComponent(unit);
}
BENCHMARK(openEditor)->Name("editor/open")->Unit(benchmark::kMicrosecond);

void fullRedraw(benchmark::State& state) {
  BenchEditor editor("sdly", static_cast<float>(state.range(0)));
  for (auto _ : state) {
    editor.view().setNeedsDisplay(true);
    editor.redraw();
  }
}
BENCHMARK(fullRedraw)->Name("editor/full redraw")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

/// The very cairo calls of a full redraw, recorded once and played again: what the redraw costs beyond them
/// is ours.
void bareCairo(benchmark::State& state) {
  const auto scale = static_cast<float>(state.range(0));
  BenchEditor editor("sdly", scale);
  Bitmap target(editor.view().frame().size, scale);
  const cairo_rectangle_t extents{0, 0, static_cast<double>(target.physicalWidth()),
                                  static_cast<double>(target.physicalHeight())};
  cairo_surface_t* recording = cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents);
  {
    const NSGraphicsContext context(recording, target.physicalHeight(), scale);
    editor.view().displayRect(editor.view().bounds());
  }
  cairo_t* cairo = cairo_create(target.surface());
  cairo_set_source_surface(cairo, recording, 0, 0);
  for (auto _ : state) cairo_paint(cairo);
  cairo_destroy(cairo);
  cairo_surface_destroy(recording);
}
BENCHMARK(bareCairo)
    ->Name("editor/bare cairo calls of a full redraw")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

void knobRedraw(benchmark::State& state) {
  BenchEditor editor("sdly", static_cast<float>(state.range(0)));
  const AudioUnitParameter parameter{editor.unit(), 0, kAudioUnitScope_Global, 0};
  float value = 0;
  for (auto _ : state) {
    value = value < 40000 ? value + 441 : 0;
    AUParameterSet(nullptr, nullptr, &parameter, value, 0);
    editor.advance(0.05);
  }
  float area = 0;
  editor.shown().takePresented();
  AUParameterSet(nullptr, nullptr, &parameter, 22050, 0);
  editor.advance(0.05);
  for (const NSRect& rect : editor.shown().takePresented()) area += rect.size.width * rect.size.height;
  state.counters["points drawn"] = area;
}
BENCHMARK(knobRedraw)
    ->Name("editor/knob redraw by automation")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

void idleTurn(benchmark::State& state) {
  BenchEditor editor("sdly", 1);
  editor.shown().takePresented();
  for (auto _ : state) editor.advance(0.05);
  state.counters["rectangles drawn"] = static_cast<double>(editor.shown().takePresented().size());
}
BENCHMARK(idleTurn)->Name("editor/idle turn");

}  // namespace
