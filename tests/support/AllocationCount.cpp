#include "AllocationCount.h"

#include <atomic>

namespace {

std::atomic<size_t> count = 0;

}  // namespace

#ifdef __SANITIZE_ADDRESS__
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*, size_t),
                                                         void (*)(const volatile void*));

size_t allocationCount() {
  static const int installed = __sanitizer_install_malloc_and_free_hooks(
      [](const volatile void*, size_t) { ++count; }, [](const volatile void*) {});
  static_cast<void>(installed);
  return count;
}
#else
extern "C" void* __libc_malloc(size_t);

extern "C" void* malloc(size_t size) {
  ++count;
  return __libc_malloc(size);
}

size_t allocationCount() {
  return count;
}
#endif
