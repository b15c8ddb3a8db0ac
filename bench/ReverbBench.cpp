#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cmath>

#include "AUEventListener.h"
#include "BenchEditor.h"
#include "ImpulseAUwrapper.h"

namespace {

void hideAllBut(NSView& editor, const std::string& className) {
  for (const auto& view : editor.subviews()) view->setHidden(view->isa().name() != className);
}

/// A tick of the modulation: both rooms turn on and are drawn.
void roomsTick(benchmark::State& state) {
  BenchEditor editor("mrev", static_cast<float>(state.range(0)));
  editor.advance(0.2);
  editor.shown().takePresented();
  for (auto _ : state) editor.advance(0.05);
  const auto presented = static_cast<double>(editor.shown().takePresented().size());
  state.counters["rectangles a tick"] = presented / static_cast<double>(state.iterations());
}
BENCHMARK(roomsTick)->Name("reverb/tick of both rooms")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

void fullRedraw(benchmark::State& state) {
  BenchEditor editor("mrev", static_cast<float>(state.range(0)));
  for (auto _ : state) {
    editor.view().setNeedsDisplay(true);
    editor.redraw();
  }
}
BENCHMARK(fullRedraw)->Name("reverb/full redraw")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

/// The graph alone: what else would follow the parameter is hidden.
void parameterToPicture(benchmark::State& state) {
  BenchEditor editor("mrev", static_cast<float>(state.range(0)));
  hideAllBut(editor.view(), "ReverbIRview");
  editor.redraw();
  const AudioUnitParameter size{editor.unit(), 3, kAudioUnitScope_Global, 0};
  float value = 0.05f;
  for (auto _ : state) {
    value = value < 0.1f ? value + 0.001f : 0.05f;
    AUParameterSet(nullptr, nullptr, &size, value, 0);
    editor.advance(0.05);
  }
}
BENCHMARK(parameterToPicture)
    ->Name("reverb/parameter to picture")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

void renderAndBareFill(benchmark::State& state) {
  const AudioUnit unit = openEffect("mrev");
  {
    ImpulseAUwrapper renderer(unit, 500, 10, true);
    const auto scale = static_cast<double>(state.range(0));
    const double left = 28, bottom = 8, width = 744, height = 104;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(780 * scale),
                                                          static_cast<int>(125 * scale));
    cairo_t* cairo = cairo_create(surface);
    cairo_scale(cairo, scale, scale);
    for (auto _ : state) {
      const float* samples = renderer.renderImpulse();
      cairo_set_source_rgba(cairo, 0.32, 0.39, 0.45, 0.5);
      cairo_new_path(cairo);
      cairo_move_to(cairo, left, bottom);
      for (int i = 1; i < 1024; ++i) {
        const double level = 10 * std::log10(std::max(std::abs(static_cast<double>(samples[i])), 1e-5));
        cairo_line_to(cairo, left + width * (i - 1) / 1024, bottom + (level + 50) / 40 * height);
      }
      cairo_line_to(cairo, left + width, bottom);
      cairo_fill(cairo);
    }
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
  }
  CloseComponent(unit);
}
BENCHMARK(renderAndBareFill)
    ->Name("reverb/render and bare fill of its outline")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
