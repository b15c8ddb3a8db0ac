#include "EditorDesk.h"

#include <algorithm>
#include <cmath>

#include "NSImageView.h"

namespace {

constexpr float edge = 20;  // points at the ground's top and bottom that are not stretched

float heightOf(const std::shared_ptr<NSView>& strip) {
  return strip ? NSHeight(strip->frame()) : 0;
}

/// The editors' ground as an editor of that frame has it.
void drawGround(NSRect frame) {
  const auto ground = NSImage::imageNamed("jxAUBackground");
  if (!ground || NSHeight(frame) < 2 * edge) return;
  const float height = ground->size().height;
  const auto draw = [&](float from, float to, float sourceFrom, float sourceTo) {
    ground->drawInRect_fromRect_operation_fraction(
        NSMakeRect(NSMinX(frame), from, NSWidth(frame), to - from),
        NSMakeRect(ground->size().width / 2, sourceFrom, 1, sourceTo - sourceFrom), NSCompositeCopy, 1);
  };
  draw(NSMinY(frame), NSMinY(frame) + edge, 0, edge);
  draw(NSMinY(frame) + edge, NSMaxY(frame) - edge, edge, height - edge);
  draw(NSMaxY(frame) - edge, NSMaxY(frame), height - edge, height);
}

}  // namespace

EditorDesk::EditorDesk(std::shared_ptr<NSView> editor, std::shared_ptr<NSView> strip)
    : NSView(NSMakeRect(0, 0, NSWidth(editor->frame()), NSHeight(editor->frame()) + heightOf(strip))),
      editor_(std::move(editor)),
      strip_(std::move(strip)) {
  addSubview(editor_);
  if (strip_) addSubview(strip_);
  setFrame(frame());
}

void EditorDesk::setFrame(NSRect frame) {
  NSView::setFrame(frame);
  const NSRect room = roomForEditor();
  const NSSize editor = editor_->frame().size;
  const float left = std::max(0.0f, std::floor((NSWidth(room) - editor.width) / 2));
  const float above = std::max(0.0f, std::floor((NSHeight(room) - editor.height) / 2));
  editor_->setFrame({{left, NSMaxY(room) - above - editor.height}, editor});
  if (strip_) strip_->setFrame(NSMakeRect(0, NSMaxY(room), NSWidth(frame), heightOf(strip_)));
  layGround();
}

NSRect EditorDesk::roomForEditor() const {
  return NSMakeRect(0, 0, NSWidth(bounds()), NSHeight(bounds()) - heightOf(strip_));
}

void EditorDesk::layGround() {
  auto* view = dynamic_cast<NSImageView*>(editor_.get());
  if (!view) return;
  if (!ownGround_) ownGround_ = view->image();
  const NSRect room = roomForEditor(), editor = editor_->frame();
  if (NSWidth(room) <= NSWidth(editor) && NSHeight(room) <= NSHeight(editor))
    return view->setImage(ownGround_);
  const auto part = NSImage::initWithSize(editor.size);
  part->lockFocus([place = NSOffsetRect(room, -NSMinX(editor), -NSMinY(editor))] { drawGround(place); });
  view->setImage(part);
}

void EditorDesk::drawRect(NSRect) {
  drawGround(roomForEditor());
}
