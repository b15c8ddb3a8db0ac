#include "X11Clipboard.h"

#include <poll.h>

#include <array>
#include <chrono>

namespace {

constexpr auto patience = std::chrono::milliseconds(250);

}  // namespace

X11Clipboard::X11Clipboard(X11Connection& connection)
    : connection_(connection),
      window_(XCreateSimpleWindow(connection.x(), connection.root(), -1, -1, 1, 1, 0, 0, 0)) {
  XSelectInput(connection.x(), window_, PropertyChangeMask);
}

X11Clipboard::~X11Clipboard() {
  XDestroyWindow(connection_.x(), window_);
}

void X11Clipboard::setText(const std::string& text) {
  XConnection* x = connection_.x();
  const Atom clipboard = connection_.atom(X11Atom::clipboard);
  text_ = text;
  ownedSince_ = serverTime();
  XSetSelectionOwner(x, clipboard, window_, ownedSince_);
  owned_ = XGetSelectionOwner(x, clipboard) == window_;
}

std::string X11Clipboard::text() {
  if (owned_) return text_;
  XConnection* x = connection_.x();
  const Atom clipboard = connection_.atom(X11Atom::clipboard);
  if (XGetSelectionOwner(x, clipboard) == None) return {};
  const Time asked = serverTime();
  XConvertSelection(x, clipboard, connection_.atom(X11Atom::utf8String), connection_.atom(X11Atom::transfer),
                    window_, asked);
  return waitForAnswer(asked) ? takeTransfer() : std::string();
}

void X11Clipboard::handle(const XEvent& event) {
  if (event.type == SelectionClear && event.xselectionclear.window == window_ &&
      event.xselectionclear.selection == connection_.atom(X11Atom::clipboard)) {
    owned_ = false;
    text_.clear();
  }
  if (event.type != SelectionRequest || event.xselectionrequest.owner != window_) return;

  const XSelectionRequestEvent& request = event.xselectionrequest;
  // Clients from before ICCCM 2 leave the property to the owner.
  const Atom property = request.property == None ? request.target : request.property;
  XEvent reply{};
  reply.xselection.type = SelectionNotify;
  reply.xselection.requestor = request.requestor;
  reply.xselection.selection = request.selection;
  reply.xselection.target = request.target;
  reply.xselection.time = request.time;
  reply.xselection.property = owned_ && answer(request, property) ? property : None;
  XSendEvent(connection_.x(), request.requestor, False, NoEventMask, &reply);
}

bool X11Clipboard::answer(const XSelectionRequestEvent& request, Atom property) {
  XConnection* x = connection_.x();
  const Atom utf8 = connection_.atom(X11Atom::utf8String);
  const auto write = [&](Atom type, int format, const void* data, size_t count) {
    XChangeProperty(x, request.requestor, property, type, format, PropModeReplace,
                    static_cast<const unsigned char*>(data), static_cast<int>(count));
    return true;
  };
  if (request.target == connection_.atom(X11Atom::targets)) {
    const std::array targets{connection_.atom(X11Atom::targets), connection_.atom(X11Atom::timestamp), utf8};
    return write(XA_ATOM, 32, targets.data(), targets.size());
  }
  if (request.target == connection_.atom(X11Atom::timestamp)) return write(XA_INTEGER, 32, &ownedSince_, 1);
  if (request.target == utf8) return write(utf8, 8, text_.data(), text_.size());
  return false;
}

Time X11Clipboard::serverTime() {
  XConnection* x = connection_.x();
  const unsigned char nothing = 0;
  XChangeProperty(x, window_, connection_.atom(X11Atom::timestamp), XA_INTEGER, 8, PropModeAppend, &nothing,
                  0);
  XEvent event;
  do XWindowEvent(x, window_, PropertyChangeMask, &event);
  while (event.xproperty.atom != connection_.atom(X11Atom::timestamp));
  return event.xproperty.time;
}

bool X11Clipboard::waitForAnswer(Time asked) {
  XConnection* x = connection_.x();
  const auto end = std::chrono::steady_clock::now() + patience;
  XEvent event;
  XFlush(x);
  while (true) {
    // An answer that came too late for an earlier question is dropped here.
    while (XCheckTypedWindowEvent(x, window_, SelectionNotify, &event))
      if (event.xselection.time == asked) return event.xselection.property != None;
    const auto now = std::chrono::steady_clock::now();
    if (now >= end) return false;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
    pollfd connection{ConnectionNumber(x), POLLIN, 0};
    poll(&connection, 1, static_cast<int>(left.count()));
  }
}

std::string X11Clipboard::takeTransfer() {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* data = nullptr;
  constexpr long longest = 1 << 20;  // in units of four bytes
  XGetWindowProperty(connection_.x(), window_, connection_.atom(X11Atom::transfer), 0, longest, True,
                     AnyPropertyType, &type, &format, &count, &rest, &data);
  std::string result;
  if (data && format == 8 && type == connection_.atom(X11Atom::utf8String))
    result.assign(reinterpret_cast<const char*>(data), count);
  if (data) XFree(data);
  return result;
}
