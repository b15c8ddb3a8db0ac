#include "X11Display.h"

#include "X11Clipboard.h"
#include "X11Connection.h"
#include "X11Events.h"
#include "X11Pointer.h"
#include "X11Screens.h"
#include "X11Window.h"

std::unique_ptr<X11Display> X11Display::create(std::string& error, float scale) {
  std::unique_ptr<X11Connection> connection = X11Connection::open(error);
  if (!connection) return nullptr;
  if (!(scale > 0)) scale = scaleFromResources(XResourceManagerString(connection->x()));
  return std::unique_ptr<X11Display>(new X11Display(std::move(connection), scale));
}

X11Display::X11Display(std::unique_ptr<X11Connection> connection, float scale)
    : connection_(std::move(connection)),
      screens_(std::make_unique<X11Screens>(*connection_, scale)),
      clipboard_(std::make_unique<X11Clipboard>(*connection_)),
      events_(std::make_unique<X11Events>(*connection_, *clipboard_)),
      pointer_(std::make_unique<X11Pointer>(*connection_, *events_, *screens_)) {}

X11Display::~X11Display() = default;

std::unique_ptr<DisplayWindow> X11Display::openWindow(const DisplayWindowOptions& options,
                                                      DisplayClient& client) {
  return std::make_unique<X11Window>(*connection_, *events_, *screens_, options, client);
}

std::vector<NSRect> X11Display::screens() const {
  return screens_->frames();
}
float X11Display::scale() const {
  return screens_->scale();
}
std::string X11Display::clipboardText() {
  return clipboard_->text();
}
void X11Display::setClipboardText(const std::string& text) {
  clipboard_->setText(text);
}
