#include "X11Window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "X11Pointer.h"
#include "X11WindowSetup.h"

namespace {

const X11Connection::PixelFormat& formatFor(X11Connection& connection, const DisplayWindowOptions& options) {
  const auto* translucent =
      options.translucent && options.borderless ? connection.translucentFormat() : nullptr;
  return translucent ? *translucent : connection.opaqueFormat();
}

Window ownerOf(X11Connection& connection, const DisplayWindowOptions& options) {
  const auto* owner = dynamic_cast<const X11Window*>(options.owner);
  return owner ? managedAncestor(connection, owner->id()) : None;
}

PixelRect united(PixelRect a, PixelRect b) {
  if (a.isEmpty()) return b;
  const int x = std::min(a.x, b.x);
  const int y = std::min(a.y, b.y);
  return {x, y, std::max(a.x + a.width, b.x + b.width) - x, std::max(a.y + a.height, b.y + b.height) - y};
}

/// The whole pixels that a rectangle in points touches.
PixelRect covering(const Bitmap& bitmap, NSRect rect) {
  constexpr float slack = 1e-3f;
  const float scale = bitmap.scale();
  const float top = bitmap.size().height - NSMaxY(rect);
  const int left = std::max(0, static_cast<int>(std::floor(NSMinX(rect) * scale + slack)));
  const int upper = std::max(0, static_cast<int>(std::floor(top * scale + slack)));
  const int right =
      std::min(bitmap.physicalWidth(), static_cast<int>(std::ceil(NSMaxX(rect) * scale - slack)));
  const int lower =
      std::min(bitmap.physicalHeight(), static_cast<int>(std::ceil((top + NSHeight(rect)) * scale - slack)));
  return {left, upper, right - left, lower - upper};
}

}  // namespace

X11Window::X11Window(X11Connection& connection, X11Events& events, const X11Screens& screens,
                     const DisplayWindowOptions& options, DisplayClient& client)
    : connection_(connection),
      events_(events),
      screens_(screens),
      options_(options),
      client_(client),
      frame_(options.frame),
      pixels_(screens.toPixels(options.frame)),
      format_(formatFor(connection, options)),
      id_(createX11Window(connection, options, pixels_, format_, ownerOf(connection, options))),
      surface_(connection, format_, id_),
      placeKnown_(!options.parent) {
  if (options.translucent && options.borderless && &format_ == &connection.opaqueFormat())
    mask_ = std::make_unique<X11ShapeMask>();
  events_.add(*this);
  watchSurroundings(true);
  XFlush(connection_.x());
}

X11Window::~X11Window() {
  setForeignPressesWanted(false);
  returnKeyboard();
  watchSurroundings(false);
  events_.remove(*this);
  if (!isGone_) XDestroyWindow(connection_.x(), id_);
  XFlush(connection_.x());
}

void X11Window::setFrame(NSRect frame) {
  const PixelRect before = pixels_;
  const PixelRect asked = screens_.toPixels(isEmbedded() ? NSRect{frame_.origin, frame.size} : frame);
  frame_.size = frame.size;
  if (!isEmbedded()) frame_.origin = frame.origin;
  pixels_ = asked;
  if (isGone_ || asked == before) return;
  const auto width = static_cast<unsigned>(asked.width);
  const auto height = static_cast<unsigned>(asked.height);
  if (!isEmbedded() && !options_.borderless) fixX11WindowSize(connection_, id_, asked);
  if (isEmbedded())
    XResizeWindow(connection_.x(), id_, width, height);
  else
    XMoveResizeWindow(connection_.x(), id_, asked.x, asked.y, width, height);
  XFlush(connection_.x());
}

void X11Window::show(bool takesKeyboard) {
  takesKeyboard_ = takesKeyboard;
  told_ = Told::nothing;
  if (isGone_) return;
  XMapRaised(connection_.x(), id_);
  XFlush(connection_.x());
}

void X11Window::hide() {
  returnKeyboard();
  if (isGone_) return;
  if (isEmbedded() || options_.borderless)
    XUnmapWindow(connection_.x(), id_);
  else
    XWithdrawWindow(connection_.x(), id_, connection_.screen());
  XFlush(connection_.x());
}

void X11Window::present(const Bitmap& bitmap, std::span<const NSRect> rects) {
  if (isGone_) return;
  std::vector<PixelRect> areas;
  for (const NSRect& rect : rects)
    if (const PixelRect area = covering(bitmap, rect); !area.isEmpty()) areas.push_back(area);
  if (mask_) {
    // The shape first: what is drawn outside it is lost.
    for (const PixelRect& area : areas) mask_->mark(bitmap, area);
    mask_->apply(connection_.x(), id_);
  }
  for (const PixelRect& area : areas)
    surface_.put(area, [&](int y, uint32_t* to) {
      const auto from = bitmap.row(y).subspan(static_cast<size_t>(area.x), static_cast<size_t>(area.width));
      if (mask_)
        std::ranges::transform(from, to, X11ShapeMask::solid);
      else
        std::copy(from.data(), from.data() + from.size(), to);
    });
  XFlush(connection_.x());
}

NSPoint X11Window::placeOfRootPixel(int rootX, int rootY) const {
  const float scale = screens_.scale();
  return {(static_cast<float>(rootX - pixels_.x) + 0.5f) / scale,
          frame_.size.height - (static_cast<float>(rootY - pixels_.y) + 0.5f) / scale};
}

void X11Window::beginRelativeMotion() {
  events_.pointer().beginRelativeMotion();
}

void X11Window::endRelativeMotion(NSPoint place) {
  constexpr float slack = 1e-3f;
  const float scale = screens_.scale();
  const auto pixel = [scale](float points) { return static_cast<int>(std::floor(points * scale + slack)); };
  events_.pointer().endRelativeMotion(pixels_.x + pixel(place.x),
                                      pixels_.y + pixel(frame_.size.height - place.y));
}

void X11Window::handle(const XEvent& event) {
  const Window window = event.xany.window;
  if (window != id_) {
    // A window around this one was moved, shown, hidden or put elsewhere.
    if (!isSurrounding(window)) return;
    changed_ = true;
    if (event.type == ReparentNotify) watchSurroundings(true);
    return;
  }
  switch (event.type) {
    case Expose:
      exposed_ =
          united(exposed_, {event.xexpose.x, event.xexpose.y, event.xexpose.width, event.xexpose.height});
      break;
    case ReparentNotify:
      watchSurroundings(true);
      [[fallthrough]];
    case ConfigureNotify:
      changed_ = true;
      break;
    case MapNotify:
      changed_ = true;
      if (keyboardWanted_ || (takesKeyboard_ && !isEmbedded())) takeKeyboard();
      break;
    case UnmapNotify:
      changed_ = true;
      events_.losePress(id_);
      break;
    case DestroyNotify:
      isGone_ = true;
      events_.losePress(id_);
      events_.tell(id_, [](DisplayClient& client) { client.displayClosed(); });
      break;
    case ClientMessage:
      if (event.xclient.message_type == connection_.atom(X11Atom::wmProtocols) &&
          static_cast<Atom>(event.xclient.data.l[0]) == connection_.atom(X11Atom::wmDeleteWindow))
        events_.tell(id_, [](DisplayClient& client) { client.displayClosed(); });
      break;
    case FocusIn:
    case FocusOut:
      handleFocus(event.xfocus);
      break;
    default:
      break;
  }
}

void X11Window::endTurn() {
  if (std::exchange(changed_, false)) refresh();
  const PixelRect part = std::exchange(exposed_, {});
  if (part.isEmpty()) return;
  const float scale = screens_.scale();
  const NSRect rect =
      NSMakeRect(static_cast<float>(part.x) / scale,
                 frame_.size.height - static_cast<float>(part.y + part.height) / scale,
                 static_cast<float>(part.width) / scale, static_cast<float>(part.height) / scale);
  events_.tell(id_, [rect](DisplayClient& client) { client.displayExposed(rect); });
}

void X11Window::refresh() {
  XWindowAttributes attributes;
  int x = 0;
  int y = 0;
  Window child = None;
  if (isGone_ || !XGetWindowAttributes(connection_.x(), id_, &attributes) ||
      !XTranslateCoordinates(connection_.x(), id_, connection_.root(), 0, 0, &x, &y, &child))
    return;
  notePixels({x, y, attributes.width, attributes.height});
  // A frame of the window manager may be shown a moment after the window in it; a host's own tree may not.
  const bool visible = isEmbedded() ? attributes.map_state == IsViewable : attributes.map_state != IsUnmapped;
  const Told now = visible ? Told::visible : Told::hidden;
  if (std::exchange(told_, now) == now) return;
  events_.tell(id_, [visible](DisplayClient& client) { client.displayChangedVisibility(visible); });
}

void X11Window::noteCorner(int rootX, int rootY) {
  notePixels({rootX, rootY, pixels_.width, pixels_.height});
}

void X11Window::notePixels(PixelRect pixels) {
  if (pixels == pixels_ && placeKnown_) return;
  const NSRect points = screens_.toPoints(pixels);
  const bool sameSize = pixels.width == pixels_.width && pixels.height == pixels_.height;
  if (!sameSize) frame_.size = points.size;
  frame_.origin = points.origin;
  pixels_ = pixels;
  placeKnown_ = true;
  events_.tell(id_, [frame = frame_](DisplayClient& client) { client.displayChangedFrame(frame); });
}
