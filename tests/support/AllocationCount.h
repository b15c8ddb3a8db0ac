#pragma once

#include <cstddef>

/// Calls from C++ that take or give back memory of the heap, by this thread so far.
size_t heapCallsOfThread();
