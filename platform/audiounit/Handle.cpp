#include "Handle.h"

#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace {

// A handle is the address of the first field, so that the way back is a cast.
struct Block {
  char* bytes = nullptr;
  std::vector<char> memory;
};
static_assert(std::is_standard_layout_v<Block>);

Block& block(Handle handle) {
  return *reinterpret_cast<Block*>(handle);
}

}  // namespace

Handle NewHandle(size_t size) try {
  auto made = std::make_unique<Block>();
  SetHandleSize(&made->bytes, size);
  return &made.release()->bytes;  // lives until DisposeHandle
} catch (const std::bad_alloc&) {
  return nullptr;
}

void DisposeHandle(Handle handle) {
  if (handle) std::unique_ptr<Block> last(&block(handle));
}

size_t GetHandleSize(Handle handle) {
  return handle ? block(handle).memory.size() : 0;
}

void SetHandleSize(Handle handle, size_t size) {
  if (!handle) return;
  block(handle).memory.resize(size);
  *handle = block(handle).memory.data();
}

void HLock(Handle) {}

void HUnlock(Handle) {}
