#include "X11Errors.h"

#define Display XConnection
#include <X11/Xlibint.h>
#undef Display
#undef min
#undef max

#include <string>

#include "NSLog.h"

struct X11Errors::Hook {
  XConnection* x = nullptr;
  _XAsyncHandler handler{};
  unsigned count = 0;
  bool expected = false;

  static Bool take(XConnection*, xReply* reply, char*, int, XPointer data) {
    if (reply->generic.type != X_Error) return False;
    auto& hook = *reinterpret_cast<Hook*>(data);
    ++hook.count;
    const xError& error = reply->error;
    const bool goneWindow = error.errorCode == BadWindow || error.errorCode == BadDrawable;
    if (!hook.expected && !goneWindow)
      NSLogOnce("X11: the server refused request " + std::to_string(error.majorCode) + "." +
                std::to_string(error.minorCode) + ", error " + std::to_string(error.errorCode));
    return True;
  }
};

X11Errors::X11Errors(XConnection* x) : hook_(std::make_unique<Hook>()) {
  hook_->x = x;
  hook_->handler.handler = &Hook::take;
  hook_->handler.data = reinterpret_cast<XPointer>(hook_.get());
  LockDisplay(x);
  hook_->handler.next = x->async_handlers;
  x->async_handlers = &hook_->handler;
  UnlockDisplay(x);
}

X11Errors::~X11Errors() {
  XSync(hook_->x, False);  // answers to what was asked last
  LockDisplay(hook_->x);
  DeqAsyncHandler(hook_->x, &hook_->handler);
  UnlockDisplay(hook_->x);
}

bool X11Errors::refused(const std::function<void()>& requests) {
  XSync(hook_->x, False);
  const unsigned before = hook_->count;
  hook_->expected = true;
  requests();
  XSync(hook_->x, False);
  hook_->expected = false;
  return hook_->count != before;
}
