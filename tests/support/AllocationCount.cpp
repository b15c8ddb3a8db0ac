#include "AllocationCount.h"

static thread_local size_t heapCalls = 0;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*, size_t),
                                                         void (*)(const volatile void*));

static void install() {
  [[maybe_unused]] static const int installed = __sanitizer_install_malloc_and_free_hooks(
      [](const volatile void*, size_t) { ++heapCalls; }, [](const volatile void*) { ++heapCalls; });
}
#else
extern "C" {  // what C++ calls
void* __libc_malloc(size_t);
void* __libc_memalign(size_t, size_t);
void __libc_free(void*);

void* malloc(size_t size) {
  ++heapCalls;
  return __libc_malloc(size);
}

void* aligned_alloc(size_t alignment, size_t size) {
  ++heapCalls;
  return __libc_memalign(alignment, size);
}

void free(void* memory) {
  if (memory) ++heapCalls;
  __libc_free(memory);
}
}

static void install() {}
#endif

size_t heapCallsOfThread() {
  install();
  return heapCalls;
}
