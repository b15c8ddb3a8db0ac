#pragma once

#include <cstddef>

/// A resizable block of bytes that is reached through a pointer to a pointer, so that it may move.
/// One thread at a time.
using Handle = char**;

/// Null only when memory is out. The bytes are 0.
Handle NewHandle(size_t size);
/// Null is ignored by all that follow.
void DisposeHandle(Handle handle);
size_t GetHandleSize(Handle handle);
/// Keeps the bytes that fit; new ones are 0. `*handle` may change.
void SetHandleSize(Handle handle, size_t size);
/// While locked, `*handle` stays what it is. Blocks move only in SetHandleSize here, so this marks intent.
void HLock(Handle handle);
void HUnlock(Handle handle);
