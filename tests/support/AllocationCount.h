#pragma once

#include <cstddef>

/// Calls of malloc, and of all that comes down to it, in the whole process so far.
size_t allocationCount();

/// Calls that take, change or give back memory of the heap, by this thread so far.
size_t heapCallsOfThread();
