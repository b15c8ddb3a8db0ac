#include "UnitaryMix.h"

#include <cmath>

namespace {

template <uint32_t lines, class AnyChunk>
void mixUnitary(LineChunks<AnyChunk>& chunks) {
  constexpr uint32_t groups = lines % 3 == 0 ? 3 : 1;
  constexpr uint32_t width = lines / groups;
  const float scale = 1 / std::sqrt(static_cast<float>(width));
  for (uint32_t half = 1; half < width; half *= 2) {
    for (uint32_t first = 0; first < lines; ++first) {
      if (first & half) continue;
      const AnyChunk difference = chunks[first] - chunks[first + half];
      chunks[first] += chunks[first + half];
      chunks[first + half] = difference;
    }
  }
  if constexpr (groups == 3) {
    for (uint32_t i = 0; i < width; ++i) {
      const AnyChunk sum = (chunks[i] + chunks[i + width] + chunks[i + 2 * width]) * (2.0f / 3);
      for (uint32_t group = 0; group < groups; ++group) chunks[i + group * width] -= sum;
    }
  }
  const AnyChunk last = chunks[lines - 1];
  for (uint32_t i = lines - 1; i > 0; --i) chunks[i] = chunks[i - 1] * scale;
  chunks[0] = last * scale;
}

}  // namespace

template <class AnyChunk>
void mixUnitary(LineChunks<AnyChunk>& chunks, uint32_t lines) {
  switch (lines) {
    case 16:
      return mixUnitary<16>(chunks);
    case 12:
      return mixUnitary<12>(chunks);
    case 8:
      return mixUnitary<8>(chunks);
    case 6:
      return mixUnitary<6>(chunks);
    case 4:
      return mixUnitary<4>(chunks);
  }
}

template void mixUnitary(LineChunks<Chunk>& chunks, uint32_t lines);
template void mixUnitary(LineChunks<ShortChunk>& chunks, uint32_t lines);
