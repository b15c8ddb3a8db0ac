#pragma once

#include <cstddef>

/// Calls that take, change or give back memory of the heap, by this thread so far.
size_t heapCallsOfThread();
