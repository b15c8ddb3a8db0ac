#pragma once

#include "NSView.h"

/// Sends the message to each direct subview that answers it (of a box: to those inside it).
void performSelectorOnSubviews(NSView& view, SEL selector);
void performSelectorOnSubviews_object(NSView& view, SEL selector, NSObject* object);

/// While an off-screen image of the view's size is being drawn to: draws what lies at the view's place,
/// from the outermost view down to and including `last`, an ancestor of the view or the view itself.
void drawSuperViewAsBg(NSView& view, NSView& last);
/// The same down to the view's superview: all that shows behind the view.
void drawSuperViewsAsOpaqueBackground(NSView& view);
