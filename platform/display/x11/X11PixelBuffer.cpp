#include "X11PixelBuffer.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include "X11Errors.h"

X11PixelBuffer::X11PixelBuffer(XConnection* x, X11Errors& errors) : x_(x) {
  isShared_ = share(errors);
  if (isShared_) return;
  own_.resize(capacity);
  pixels_ = own_;
}

X11PixelBuffer::~X11PixelBuffer() {
  if (!isShared_) return;
  XShmDetach(x_, &shared_);
  shmdt(shared_.shmaddr);
}

bool X11PixelBuffer::share(X11Errors& errors) {
  if (!XShmQueryExtension(x_)) return false;
  shared_.shmid = shmget(IPC_PRIVATE, capacity * sizeof(uint32_t), IPC_CREAT | 0600);
  if (shared_.shmid < 0) return false;
  void* memory = shmat(shared_.shmid, nullptr, 0);
  const bool mapped = memory != reinterpret_cast<void*>(-1);
  shared_.shmaddr = static_cast<char*>(memory);
  shared_.readOnly = True;
  const bool attached = mapped && !errors.refused([&] { XShmAttach(x_, &shared_); });
  // From here the segment lives as long as somebody is attached to it, also when the process ends hard.
  shmctl(shared_.shmid, IPC_RMID, nullptr);
  if (attached)
    pixels_ = {static_cast<uint32_t*>(memory), capacity};
  else if (mapped)
    shmdt(memory);
  return attached;
}

std::span<uint32_t> X11PixelBuffer::take(size_t pixels) {
  if (given_ + pixels > capacity) {
    if (isShared_) XSync(x_, False);
    given_ = 0;
  }
  const std::span<uint32_t> taken = pixels_.subspan(given_, pixels);
  given_ += pixels;
  return taken;
}

void X11PixelBuffer::put(std::span<uint32_t> taken, unsigned width, Drawable to, GC gc, const Visual* visual,
                         int depth, int x, int y) {
  const unsigned height = static_cast<unsigned>(taken.size()) / width;
  char* data = reinterpret_cast<char*>(taken.data());
  auto* format = const_cast<Visual*>(visual);
  XImage* image = isShared_ ? XShmCreateImage(x_, format, static_cast<unsigned>(depth), ZPixmap, data,
                                              &shared_, width, height)
                            : XCreateImage(x_, format, static_cast<unsigned>(depth), ZPixmap, 0, data, width,
                                           height, 32, static_cast<int>(width) * 4);
  if (isShared_)
    XShmPutImage(x_, to, gc, image, 0, 0, x, y, width, height, False);
  else
    XPutImage(x_, to, gc, image, 0, 0, x, y, width, height);
  image->data = nullptr;  // ours; Xlib would free it
  XDestroyImage(image);
}
