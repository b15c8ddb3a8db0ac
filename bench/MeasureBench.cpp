#include <benchmark/benchmark.h>
#include <cairo.h>
#include <kiss_fftr.h>

#include <cmath>
#include <vector>

#include "AUEventListener.h"
#include "AudioUnitProperties.h"
#include "BenchEditor.h"
#include "ImpulseAUwrapper.h"

namespace {

constexpr unsigned long order = 11;
constexpr UInt32 frames = 1u << order;
constexpr double rate = 44100;

/// The multi-band filter with every band at work.
struct BusyFilter {
  BusyFilter() : unit(openEffect("filt")) {
    for (const UInt32 gain : {2u, 4u, 7u, 10u, 14u})
      AudioUnitSetParameter(unit, gain, kAudioUnitScope_Global, 0, gain % 2 ? 9 : -6, 0);
  }
  ~BusyFilter() { CloseComponent(unit); }
  BusyFilter(const BusyFilter&) = delete;
  BusyFilter& operator=(const BusyFilter&) = delete;
  AudioUnit unit;
};

void measurement(benchmark::State& state) {
  const BusyFilter filter;
  ImpulseAUwrapper renderer(filter.unit, rate, order, false);
  for (auto _ : state) benchmark::DoNotOptimize(renderer.freqResponse());
}
BENCHMARK(measurement)->Name("measure/filter")->Unit(benchmark::kMicrosecond);

/// What cannot be saved: the effect's own render, the transform, the logarithms.
void measurementFloor(benchmark::State& state) {
  const BusyFilter filter;
  std::vector<float> samples(2 * frames), levels(frames);
  std::vector<kiss_fft_cpx> bins(frames + 1);
  const AudioStreamBasicDescription mono = ImpulseAUwrapper::nativeMonoPcmABDWithSampleRate(rate);
  for (const AudioUnitScope scope : {kAudioUnitScope_Input, kAudioUnitScope_Output})
    AudioUnitSetProperty(filter.unit, kAudioUnitProperty_StreamFormat, scope, 0, &mono, sizeof mono);
  const AURenderCallbackStruct input{
      [](void* memory, UInt32*, const AudioTimeStamp*, UInt32, UInt32, AudioBufferList* data) -> OSStatus {
        data->mBuffers[0].mData = memory;
        return noErr;
      },
      samples.data()};
  AudioUnitSetProperty(filter.unit, kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input, 0, &input,
                       sizeof input);
  AudioUnitInitialize(filter.unit);
  const kiss_fftr_cfg transform = kiss_fftr_alloc(2 * frames, 0, nullptr, nullptr);
  for (auto _ : state) {
    samples.assign(samples.size(), 0);
    samples[0] = 1;
    AudioBufferList data{1, {{1, frames * sizeof(float), samples.data()}, {}}};
    AudioUnitRender(filter.unit, nullptr, nullptr, 0, frames, &data);
    kiss_fftr(transform, samples.data(), bins.data());
    for (UInt32 k = 0; k < frames; ++k) levels[k] = 20 * std::log10(std::hypot(bins[k].r, bins[k].i));
    benchmark::DoNotOptimize(levels.data());
  }
  kiss_fftr_free(transform);
}
BENCHMARK(measurementFloor)->Name("measure/render, transform and logarithms")->Unit(benchmark::kMicrosecond);

/// The graph alone: what else would follow the parameter is hidden.
void parameterToPicture(benchmark::State& state) {
  BenchEditor editor("filt", static_cast<float>(state.range(0)));
  for (const auto& view : editor.view().subviews())
    view->setHidden(view->isa().name() != "AUFilterGraphView");
  editor.redraw();
  const AudioUnitParameter gain{editor.unit(), 7, kAudioUnitScope_Global, 0};
  float value = 0;
  for (auto _ : state) {
    value = value < 15 ? value + 1 : -15;
    AUParameterSet(nullptr, nullptr, &gain, value, 0);
    editor.advance(0.05);
  }
}
BENCHMARK(parameterToPicture)
    ->Name("measure/parameter to picture")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

void measurementAndBareFill(benchmark::State& state) {
  const BusyFilter filter;
  ImpulseAUwrapper renderer(filter.unit, rate, order, false);
  const auto scale = static_cast<double>(state.range(0));
  const double left = 28, bottom = 8, width = 464, height = 184;
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(500 * scale),
                                                        static_cast<int>(205 * scale));
  cairo_t* cairo = cairo_create(surface);
  cairo_scale(cairo, scale, scale);
  for (auto _ : state) {
    const float* levels = renderer.freqResponse();
    cairo_set_source_rgba(cairo, 0.32, 0.39, 0.45, 0.5);
    cairo_new_path(cairo);
    cairo_move_to(cairo, left, bottom);
    for (UInt32 i = 1; i < frames; ++i)
      cairo_line_to(cairo, left + std::log2(i * rate / 2 / frames / 50) / std::log2(441) * width,
                    bottom + (static_cast<double>(levels[i]) + 25) / 50 * height);
    cairo_line_to(cairo, left + width, bottom);
    cairo_fill(cairo);
  }
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}
BENCHMARK(measurementAndBareFill)
    ->Name("measure/measurement and bare fill of its outline")
    ->Arg(1)
    ->Arg(2)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
