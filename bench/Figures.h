#pragma once

#include "RatioTable.h"

/// What the user waits for, per editor and scale, over what the libraries and the effect take for it.
void addEditorFigures(RatioTable& table);
/// A minute of automation of all parameters: the worst turns of the run loop.
void addWorstTurns(RatioTable& table);
/// 10,000 blocks: the worst over the median, per effect.
void addWorstBlocks(RatioTable& table);
/// How figures grow with what there is.
void addGrowth(RatioTable& table);
/// A message by name.
void addMessages(RatioTable& table);
