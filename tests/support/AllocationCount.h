#pragma once

#include <cstddef>

/// Calls of malloc, and of all that comes down to it, in the whole process so far.
size_t allocationCount();
