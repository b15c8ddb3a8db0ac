#include "X11Surface.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <cstring>

X11Surface::X11Surface(X11Connection& connection, const X11Connection::PixelFormat& format, Window window)
    : connection_(connection),
      format_(format),
      window_(window),
      gc_(XCreateGC(connection.x(), window, 0, nullptr)) {}

X11Surface::~X11Surface() {
  release();
  XFreeGC(connection_.x(), gc_);
}

void X11Surface::resize(int width, int height) {
  if (image_ && image_->width == width && image_->height == height) return;
  release();
  if (!shareMemory(width, height)) useOwnMemory(width, height);
}

bool X11Surface::shareMemory(int width, int height) {
  if (!connection_.hasSharedMemory()) return false;
  XConnection* x = connection_.x();
  const size_t bytes = static_cast<size_t>(width) * static_cast<size_t>(height) * 4;
  shared_.shmid = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
  if (shared_.shmid < 0) return false;
  void* memory = shmat(shared_.shmid, nullptr, 0);
  shared_.shmaddr = static_cast<char*>(memory);
  shared_.readOnly = True;
  const bool attached = memory != reinterpret_cast<void*>(-1) &&
                        !connection_.errors().refused([&] { XShmAttach(x, &shared_); });
  // From here the segment lives as long as somebody is attached to it, also when the process ends hard.
  shmctl(shared_.shmid, IPC_RMID, nullptr);
  if (!attached) {
    if (memory != reinterpret_cast<void*>(-1)) shmdt(memory);
    return false;
  }
  image_ = XShmCreateImage(x, format_.visual, static_cast<unsigned>(format_.depth), ZPixmap, shared_.shmaddr,
                           &shared_, static_cast<unsigned>(width), static_cast<unsigned>(height));
  isShared_ = true;
  return true;
}

void X11Surface::useOwnMemory(int width, int height) {
  own_.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 0);
  image_ = XCreateImage(connection_.x(), format_.visual, static_cast<unsigned>(format_.depth), ZPixmap, 0,
                        reinterpret_cast<char*>(own_.data()), static_cast<unsigned>(width),
                        static_cast<unsigned>(height), 32, width * 4);
}

void X11Surface::release() {
  if (!image_) return;
  image_->data = nullptr;  // ours; Xlib would free it
  XDestroyImage(image_);
  image_ = nullptr;
  own_.clear();
  if (!isShared_) return;
  XShmDetach(connection_.x(), &shared_);
  shmdt(shared_.shmaddr);
  isShared_ = false;
}

uint32_t* X11Surface::row(int y) {
  return reinterpret_cast<uint32_t*>(image_->data + static_cast<ptrdiff_t>(y) * image_->bytes_per_line);
}

void X11Surface::copy(const Bitmap& bitmap, PixelRect area) {
  for (int y = area.y; y < area.y + area.height; ++y)
    std::memcpy(row(y) + area.x, bitmap.row(y) + static_cast<ptrdiff_t>(area.x) * 4,
                static_cast<size_t>(area.width) * 4);
}

void X11Surface::put(PixelRect area) {
  const auto width = static_cast<unsigned>(area.width);
  const auto height = static_cast<unsigned>(area.height);
  if (isShared_)
    XShmPutImage(connection_.x(), window_, gc_, image_, area.x, area.y, area.x, area.y, width, height, False);
  else
    XPutImage(connection_.x(), window_, gc_, image_, area.x, area.y, area.x, area.y, width, height);
}
