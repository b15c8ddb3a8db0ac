#pragma once

#include "ReverbLine.h"

/// A number for each line.
using LineValues = Sixteen;
inline constexpr uint32_t maximumLines = LineValues::size;
template <class AnyChunk>
using LineChunks = std::array<AnyChunk, maximumLines>;

/// Sends every one of the first `lines` chunks to all of them and loses no energy: a Hadamard matrix, times a
/// Householder reflection of three where the lines are three times a power of two, and each line to its
/// neighbour, as a Hadamard matrix applied twice would bring everything back. 16, 12, 8, 6
/// or 4 lines.
template <class AnyChunk>
void mixUnitary(LineChunks<AnyChunk>& chunks, uint32_t lines);
