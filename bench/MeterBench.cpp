#include <benchmark/benchmark.h>
#include <cairo.h>

#include <array>
#include <random>
#include <vector>

#include "AudioUnitProperties.h"
#include "BenchEditor.h"

namespace {

constexpr int bands = 4;
constexpr int samples = 100;  // of each meter's history
constexpr UInt32 blockFrames = 2205;

OSStatus noise(void*, UInt32*, const AudioTimeStamp*, UInt32, UInt32 frames, AudioBufferList* data) {
  static std::minstd_rand random(1);
  static float loudness = 1;
  loudness = loudness > 0.05f ? loudness * 0.8f : 1;
  for (UInt32 c = 0; c < data->mNumberBuffers; ++c)
    for (UInt32 i = 0; i < frames; ++i)
      static_cast<float*>(data->mBuffers[c].mData)[i] =
          loudness * (static_cast<float>(random()) / 2147483647.0f - 0.5f);
  return noErr;
}

/// The multiband compressor's editor after five seconds of noise, and what its meters have shown.
struct MeterEditor : BenchEditor {
  explicit MeterEditor(float scale) : BenchEditor("mcmp", scale) {
    const AURenderCallbackStruct input{&noise, nullptr};
    AudioUnitSetProperty(unit(), kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input, 0, &input,
                         sizeof input);
    AudioUnitInitialize(unit());
    for (int tick = 0; tick < samples; ++tick) {
      AudioBufferList data{.mNumberBuffers = 2, .mBuffers = {}};
      AudioUnitRender(unit(), nullptr, nullptr, 0, blockFrames, &data);
      for (int band = 0; band < bands; ++band) {
        Float32 amount = 0;
        AudioUnitGetParameter(unit(), static_cast<UInt32>(1000 * (band + 1)), kAudioUnitScope_Global, 0,
                              &amount);
        history[static_cast<size_t>(band)].push_back(amount);
      }
      advance(0.05);
    }
    collect(view());
  }

  void collect(NSView& inside) {
    for (const auto& each : inside.subviews()) {
      if (each->isa().name() == "jxAUCompAmountView") meters.push_back(each.get());
      collect(*each);
    }
  }

  std::array<std::vector<float>, bands> history;
  std::vector<NSView*> meters;
};

void meterTick(benchmark::State& state) {
  MeterEditor editor(static_cast<float>(state.range(0)));
  for (auto _ : state) {
    for (NSView* meter : editor.meters) meter->setNeedsDisplay(true);
    editor.redraw();
  }
}
BENCHMARK(meterTick)->Name("meters/tick")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

/// The four areas filled on bare cairo, each from a path of the same points, clipped to the plot's rounded
/// rectangle or not clipped at all.
void bareFills(benchmark::State& state, bool clipped) {
  const auto scale = static_cast<double>(state.range(0));
  const MeterEditor editor(static_cast<float>(scale));
  const double width = 94, height = 80;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(130 * scale),
                                                        static_cast<int>(96 * scale));
  cairo_t* cairo = cairo_create(surface);
  cairo_scale(cairo, scale, scale);
  for (auto _ : state) {
    for (const auto& amounts : editor.history) {
      cairo_save(cairo);
      if (clipped) {
        cairo_new_path(cairo);
        cairo_arc(cairo, 33, 83, 5, 1.5708, 3.14159);
        cairo_arc(cairo, 33, 13, 5, 3.14159, 4.71239);
        cairo_arc(cairo, 117, 13, 5, 4.71239, 6.28319);
        cairo_arc(cairo, 117, 83, 5, 0, 1.5708);
        cairo_close_path(cairo);
        cairo_clip(cairo);
      }
      cairo_set_source_rgba(cairo, 0.9, 0.3, 0.2, 0.8);
      cairo_new_path(cairo);
      cairo_move_to(cairo, 28 + width, 88);
      for (size_t k = 0; k < amounts.size(); ++k)
        cairo_line_to(cairo, 28 + width - static_cast<double>(k) * width / samples,
                      88 - static_cast<double>(amounts[amounts.size() - 1 - k]) / 20 * height);
      cairo_line_to(cairo, 28, 88);
      cairo_fill(cairo);
      cairo_restore(cairo);
    }
  }
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}
BENCHMARK_CAPTURE(bareFills, clipped, true)
    ->Name("meters/bare fills, clipped")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(bareFills, plain, false)
    ->Name("meters/bare fills")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
