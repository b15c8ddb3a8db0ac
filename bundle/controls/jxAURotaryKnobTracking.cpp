// How a knob is turned: the part of jxAURotaryKnob that follows the mouse.

#include <algorithm>
#include <cmath>

#include "NSWindow.h"
#include "jxAUKnobOverlayWindow.h"
#include "jxAURotaryKnob.h"

namespace {

constexpr NSTimeInterval tickInterval = 0.05;
constexpr NSTimeInterval endStopTime = 1.5;
constexpr float fineFactor = 0.1f;
constexpr double rangeOfNone = 100;

std::shared_ptr<NSTimer> timer(NSTimeInterval interval, NSObject* target, const char* selector,
                               bool repeats) {
  return NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
      interval, target, NSSelectorFromString(selector), nullptr, repeats);
}

float signedPower(float velocity) {
  return std::copysign(std::pow(std::abs(velocity), 1.5f), velocity);
}

SEL beginAction() {
  static const SEL selector = NSSelectorFromString("beginAction:");
  return selector;
}

SEL endAction() {
  static const SEL selector = NSSelectorFromString("endAction:");
  return selector;
}

}  // namespace

bool jxAURotaryKnob::wantsDefault(const NSEvent& event) const {
  return (event.modifierFlags & NSAlternateKeyMask) && m_hasDefault;
}

void jxAURotaryKnob::mouseDown(const NSEvent& event) {
  downPoint = convertPoint_fromView(event.locationInWindow, nullptr);
  m_downPoint = event.locationInWindow;

  NSPerformIfAnswered(m_target, beginAction(), this);
  if (window()) window()->beginRelativeMotion();
  if (!gArrowWindow) gArrowWindow = std::make_shared<jxAUKnobOverlayWindow>();
  gArrowWindow->setUnit(unit);
  gArrowWindow->orderFront(this);
  updateToolTip();
  if (wantsDefault(event)) returnToDefault();

  if (knobTimer) knobTimer->invalidate();
  knobTimer = timer(tickInterval, this, "knobTimerProc:", true);
  currentVelocity = mouseDelta = {0, 0};
  lastMouseEventTime = NSDate::timeIntervalSinceReferenceDate();
  checkNeedTimer();
}

void jxAURotaryKnob::mouseDragged(const NSEvent& event) {
  const float factor = event.modifierFlags & NSShiftKeyMask ? fineFactor : 1;
  mouseDelta = {mouseDelta.x + factor * event.deltaX, mouseDelta.y + factor * event.deltaY};
  if (!wantsDefault(event)) return;
  returnToDefault();
  mouseDelta = currentVelocity = {0, 0};
}

void jxAURotaryKnob::knobTimerProc(NSTimer*) {
  const double now = NSDate::timeIntervalSinceReferenceDate();
  const double elapsed = now - lastMouseEventTime;
  if (elapsed <= 0) return;  // no velocity can be told: the motion waits for the next tick
  lastMouseEventTime = now;
  const NSPoint moved = mouseDelta;
  mouseDelta = {0, 0};

  const double scale = elapsed * 10 * (mouseRange > 0 ? mouseRange : rangeOfNone);
  const auto smoothed = [scale](float velocity, float delta) {
    return 0.5f * velocity + 0.5f * static_cast<float>(delta / scale);
  };
  currentVelocity = {smoothed(currentVelocity.x, moved.x), smoothed(currentVelocity.y, moved.y)};
  const float step = 0.1f * signedPower(currentVelocity.x) - signedPower(currentVelocity.y);

  const double before = m_value;
  m_value = std::clamp(m_value + step, 0.0, 1.0);
  if (static_cast<float>(m_value) == static_cast<float>(before)) return;
  positionChanged();
  updateToolTip();
}

void jxAURotaryKnob::mouseUp(const NSEvent&) {
  if (knobTimer) knobTimer->invalidate();
  knobTimer = nullptr;
  NSPerformIfAnswered(m_target, endAction(), this);
  sendAction_to(m_action, m_target);
  if (gArrowWindow) gArrowWindow->orderOut(this);
  if (window()) window()->endRelativeMotion(m_downPoint);
}

void jxAURotaryKnob::scrollWheel(const NSEvent& event) {
  const float step = (event.deltaY + event.deltaX * -0.1f) / 50;
  m_value = std::clamp(m_value + step, 0.0, 1.0);
  positionChanged();
}

void jxAURotaryKnob::positionChanged() {
  checkNeedTimer();
  sendAction_to(m_action, m_target);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::checkNeedTimer() {
  if (m_timer || (m_value != 0 && m_value != 1)) return;
  m_showRedLimit = true;
  m_timer = timer(endStopTime, this, "hideRedLimit:", false);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::hideRedLimit(NSTimer*) {
  m_showRedLimit = false;
  m_timer = nullptr;
  setNeedsDisplay(true);
}
