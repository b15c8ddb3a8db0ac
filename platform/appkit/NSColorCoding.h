#pragma once

#include "Class.h"

/// The record under which the class list names NSColor: colours are archived as red, green, blue and alpha.
const Class& archivedColorRecord();
