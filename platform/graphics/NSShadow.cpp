#include "NSShadow.h"

#include "NSGraphicsContext.h"

void NSShadow::set() const {
  if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) context->setShadow(*this);
}
