#include "EditorKind.h"

namespace {

constexpr MeasurementKind filterResponse{44100, 11, 1, true}, bandResponse{44100, 10, 1, true};
constexpr MeasurementKind reverbDecay{500, 10, 2, false};

constexpr EditorKind kinds[] = {
    {.code = "mcmp", .parameter = 2, .moves = EditorKind::hasMeters, .tick = 0.05},
    {.code = "dcmp", .parameter = 0, .moves = EditorKind::hasMeters, .tick = 0.05},
    {.code = "lmtr", .parameter = 2, .moves = EditorKind::hasMeters, .tick = 0.04},
    {.code = "filt", .parameter = 7, .measurement = filterResponse},
    {.code = "lpas", .parameter = 0, .measurement = bandResponse},
    {.code = "bpas", .parameter = 0, .measurement = bandResponse},
    {.code = "pmeq", .parameter = 0, .measurement = bandResponse},
    {.code = "mrev", .parameter = 3, .moves = EditorKind::hasRooms, .tick = 0.05, .measurement = reverbDecay},
    {.code = "dely", .parameter = 2},
    {.code = "sdly", .parameter = 0},
    {.code = "tmpt", .parameter = 1},
};

}  // namespace

std::span<const EditorKind> editorKinds() {
  return kinds;
}
