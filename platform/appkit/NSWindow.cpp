#include "NSWindow.h"

#include <algorithm>

#include "MenuTracking.h"
#include "NSException.h"

const Class& NSWindow::isa() const {
  return record();
}

const Class& NSWindow::record() {
  static const Class c = Class::of<NSWindow>("NSWindow", NSObject::record());
  return c;
}

NSWindow::NSWindow(NSRect contentRect, unsigned styleMask, NSBackingStoreType, bool, Display* display)
    : frame_(contentRect),
      borderless_(styleMask == NSBorderlessWindowMask),
      contentView_(std::make_shared<NSView>(NSRect{{0, 0}, contentRect.size})),
      loop_(NSRunLoop::currentRunLoop().shared_from_this()),
      display_(display) {
  contentView_->window_ = this;
  loop_->addObserver(*this, RunLoopObserver::Phase::drawing);
}

NSWindow::~NSWindow() {
  delegate_ = nullptr;
  close();
  orderOut(nullptr);  // what was shown for it since it was closed
  contentView_->window_ = nullptr;
  loop_->removeObserver(*this);
}

void NSWindow::setContentView(std::shared_ptr<NSView> view) {
  viewWillLeave(*contentView_);
  contentView_->window_ = nullptr;
  if (view->superview()) view->removeFromSuperview();
  contentView_ = std::move(view);
  contentView_->window_ = this;
  contentView_->setFrame(bounds());
  addDamage(bounds());
}

void NSWindow::setFrame(NSRect frame) {
  if (frame == frame_) return;
  if (isLayer_)
    owner_->exposed_.add(NSOffsetRect(frame_, -owner_->frame_.origin.x, -owner_->frame_.origin.y));
  const bool resized = !(frame.size == frame_.size);
  frame_ = frame;
  if (resized) {
    contentView_->setFrame(bounds());
    surface_.reset();
    addDamage(bounds());
  }
  if (visible_)
    place();
  else if (real_)
    real_->setFrame(frame_);  // it may be shown again by the display itself
}

NSPoint NSWindow::convertBaseToScreen(NSPoint point) const {
  return {point.x + frame_.origin.x, point.y + frame_.origin.y};
}

void NSWindow::setBackgroundColor(std::shared_ptr<NSColor> color) {
  background_ = std::move(color);
  addDamage(bounds());
}

void NSWindow::orderFront(NSObject* sender) {
  const auto* view = dynamic_cast<NSView*>(sender);
  show(false, view ? view->window() : nullptr);
}

void NSWindow::makeKeyAndOrderFront() {
  show(true, nullptr);
}

void NSWindow::show(bool takesKeyboard, NSWindow* owner) {
  leaveOwner();
  closed_ = false;
  owner_ = owner;
  if (owner_) {
    owner_->belonging_.push_back(this);
    display_ = owner_->display_;
  }
  visible_ = true;
  place();
  if (real_ && !owner_) real_->show(takesKeyboard);
  if (!firstResponder_ && initialFirstResponder_) makeFirstResponder(initialFirstResponder_);
}

void NSWindow::place() {
  const bool hasOwner = owner_ && owner_->visible_;
  if (hasOwner && (NSContainsRect(owner_->frame_, frame_) || (ignoresMouse_ && owner_->real_))) {
    placeLayer();
    return;
  }
  isLayer_ = false;
  overhangs_.clear();
  if (real_) {
    real_->setFrame(frame_);
  } else if (display_) {
    real_ = display_->openWindow({.frame = frame_,
                                  .title = title_,
                                  .borderless = borderless_,
                                  .translucent = !opaque_,
                                  .ignoresMouse = ignoresMouse_,
                                  .parent = parent_,
                                  .owner = owner_ ? owner_->real_.get() : nullptr},
                                 *this);
    if (owner_) real_->show(false);
  }
  addDamage(bounds());
}

void NSWindow::placeLayer() {
  real_.reset();
  isLayer_ = true;
  overhangs_.clear();
  owner_->exposed_.add(NSOffsetRect(frame_, -owner_->frame_.origin.x, -owner_->frame_.origin.y));
  if (!owner_->real_) return;
  for (const NSRect& part : partsBeyond(owner_->frame_, frame_, display_->scale()))
    overhangs_.push_back(std::make_unique<Overhang>(*display_, *owner_->real_, part, frame_, opaque_));
}

void NSWindow::followOwner() {
  if (isLayer_)
    place();
  else if (real_)
    real_->setFrame(frame_);
}

void NSWindow::leaveOwner() {
  if (isLayer_)
    owner_->exposed_.add(NSOffsetRect(frame_, -owner_->frame_.origin.x, -owner_->frame_.origin.y));
  if (owner_) std::erase(owner_->belonging_, this);
  owner_ = nullptr;
  isLayer_ = false;
  overhangs_.clear();
}

void NSWindow::orderOut(NSObject*) {
  router_.endGesture();
  while (!belonging_.empty()) belonging_.back()->orderOut(nullptr);
  leaveOwner();
  visible_ = false;
  // A floating window is gone while it is not shown; one of its own keeps its place on the screen.
  if (borderless_)
    real_.reset();
  else if (real_)
    real_->hide();
}

void NSWindow::close() {
  if (closed_) return;
  closed_ = true;
  router_.endGesture();
  makeFirstResponder(nullptr);
  orderOut(nullptr);
  real_.reset();
  surface_.reset();
  static const SEL willClose = NSSelectorFromString("windowWillClose:");
  NSPerformIfAnswered(delegate_, willClose, this);
}

bool NSWindow::makeFirstResponder(NSView* view) {
  if (view == firstResponder_) return true;
  if (firstResponder_ && !firstResponder_->resignFirstResponder()) return false;
  firstResponder_ = nullptr;
  bool accepted = true;
  if (view) {
    accepted = view->acceptsFirstResponder() && view->becomeFirstResponder();
    if (accepted) firstResponder_ = view;
  }
  updateKeyboard();
  return accepted;
}

void NSWindow::updateKeyboard() {
  if (!real_ || inEvent_) return;
  const bool hasMenu = MenuTracking::isOpenIn(*this);
  real_->setKeyboardWanted(isTyping() || hasMenu);
  real_->setForeignPressesWanted(hasMenu);
}

void NSWindow::beginRelativeMotion() {
  if (real_) real_->beginRelativeMotion();
}

void NSWindow::endRelativeMotion(NSPoint place) {
  if (real_) real_->endRelativeMotion(place);
}

bool NSWindow::isTyping() const {
  return firstResponder_ && firstResponder_->acceptsTyping();
}

namespace {

void collectFields(const NSView& view, std::vector<NSView*>& fields) {
  for (const auto& child : view.subviews()) {
    if (child->isHidden()) continue;
    if (child->acceptsTyping()) fields.push_back(child.get());
    collectFields(*child, fields);
  }
}

}  // namespace

bool NSWindow::selectNextField(const NSView& from, bool backwards) {
  std::vector<NSView*> fields;
  collectFields(*contentView_, fields);
  const auto here = std::find(fields.begin(), fields.end(), &from);
  if (here == fields.end() || fields.size() < 2) return false;
  const auto count = static_cast<ptrdiff_t>(fields.size());
  const ptrdiff_t next = ((here - fields.begin()) + (backwards ? count - 1 : 1)) % count;
  makeFirstResponder(fields[static_cast<size_t>(next)]);
  return true;
}

void NSWindow::addDamage(NSRect rect) {
  if (!isLayer_) return damage_.add(rect);
  owner_->exposed_.add(NSOffsetRect(rect, frame_.origin.x - owner_->frame_.origin.x,
                                    frame_.origin.y - owner_->frame_.origin.y));
  for (const auto& overhang : overhangs_) overhang->addDamage(rect);
}

void NSWindow::viewWillLeave(NSView& tree) {
  MenuTracking::closeIn(tree);
  router_.endGestureIn(tree);
  if (firstResponder_ && firstResponder_->isDescendantOf(tree)) {
    firstResponder_->resignFirstResponder();
    firstResponder_ = nullptr;
    updateKeyboard();
  }
  if (initialFirstResponder_ && initialFirstResponder_->isDescendantOf(tree))
    initialFirstResponder_ = nullptr;
}

void NSWindow::keyDown(const NSEvent& event) {
  NSView* receiver = firstResponder_ ? firstResponder_ : contentView_.get();
  std::static_pointer_cast<NSView>(receiver->shared_from_this())->keyDown(event);
}

void NSWindow::displayEvent(const NSEvent& event) {
  const auto self = shared(this);
  inEvent_ = true;
  NSGuardCallback("event", [&] { router_.handle(event); });
  inEvent_ = false;
  updateKeyboard();
}

void NSWindow::displayPointerMoved(NSPoint place) {
  if (MenuTracking* menu = MenuTracking::current()) menu->pointerMoved(convertBaseToScreen(place));
}

void NSWindow::displayLostPointer() {
  if (MenuTracking* menu = MenuTracking::current()) menu->pointerLost();
  router_.endGesture();
}

void NSWindow::displayExposed(NSRect rect) {
  exposed_.add(NSIntersectionRect(rect, bounds()));
}

void NSWindow::displayChangedFrame(NSRect frame) {
  const bool resized = !(frame.size == frame_.size);
  for (NSWindow* window : belonging_)
    window->frame_ =
        NSOffsetRect(window->frame_, frame.origin.x - frame_.origin.x, frame.origin.y - frame_.origin.y);
  frame_ = frame;
  for (NSWindow* window : belonging_) window->followOwner();
  if (!resized) return;
  if (MenuTracking::isOpenIn(*this)) MenuTracking::close();
  contentView_->setFrame(bounds());
  surface_.reset();
  addDamage(bounds());
}

void NSWindow::displayChangedVisibility(bool visible) {
  const auto self = shared(this);  // a menu's window goes with the menu
  if (!visible) {
    MenuTracking::closeIn(*this);
    router_.endGesture();
  }
  visible_ = visible;
}

void NSWindow::displayClosed() {
  const auto self = shared(this);
  close();
}

void NSWindow::displayChangedKeyboard(bool focused) {
  const auto self = shared(this);
  if (!focused) MenuTracking::closeIn(*this);
  if (!focused && isTyping()) makeFirstResponder(nullptr);
}

NSTimeInterval NSWindow::nextDue() const {
  const bool pending =
      real_ ? !(damage_.isEmpty() && exposed_.isEmpty())
            : std::ranges::any_of(overhangs_, &Overhang::isDamaged, &std::unique_ptr<Overhang>::operator*);
  return visible_ && pending ? 0 : never;
}

void NSWindow::runPhase(NSTimeInterval) {
  if (!visible_) return;
  if (real_) presentPending();
  for (const auto& overhang : overhangs_) overhang->present(*contentView_, *background_);
}

std::vector<WindowSurface::Layer> NSWindow::layers() const {
  std::vector<WindowSurface::Layer> list;
  for (const NSWindow* window : belonging_)
    if (window->isLayer_)
      list.push_back(
          {window->contentView(),
           {window->frame_.origin.x - frame_.origin.x, window->frame_.origin.y - frame_.origin.y}});
  return list;
}

void NSWindow::presentPending() {
  if (damage_.isEmpty() && exposed_.isEmpty()) return;
  if (!surface_) {
    surface_.emplace(frame_.size, display_->scale());
    damage_.add(bounds());
  }
  // What is marked from here on, also by the drawing itself, belongs to the next turn.
  std::vector<NSRect> drawn = damage_.take();
  for (NSRect& rect : drawn) {
    rect = NSIntersectionRect(NSIntegralRectAtScale(rect, surface_->views().scale()), bounds());
    exposed_.add(rect);
  }
  surface_->draw({contentView_.get(), {0, 0}}, *background_, drawn);

  std::vector<NSRect> shown = exposed_.take();
  for (NSRect& rect : shown)
    rect = NSIntersectionRect(NSIntegralRectAtScale(rect, surface_->views().scale()), bounds());
  std::erase_if(shown, [](const NSRect& rect) { return NSIsEmptyRect(rect); });
  if (!shown.empty()) real_->present(surface_->composed(layers(), shown), shown);
}

const Bitmap* NSWindow::snapshot() {
  if (!visible_ || !real_) return nullptr;
  presentPending();
  return &surface_->composed(layers(), {});
}
