#include "NSCoder.h"

#include <cmath>

#include "NSAssertionHandler.h"
#include "NSException.h"

size_t NSCoder::sizeOfType(char type) {
  return type == 'd' ? 8 : type == 'c' ? 1 : 4;
}

void NSCoder::fail(const std::string& message) const {
  throw NSException(NSInconsistentArchiveException, message);
}

void NSCoder::checkType(std::string_view given, char needed) {
  if (given.size() == 1 && given[0] == needed) return;
  NSAssertionHandler::currentHandler().handleFailureInMethod(
      "encodeValueOfObjCType:at:", nullptr, "NSCoder", __LINE__,
      "type \"" + std::string(given) + "\" for a variable of type \"" + needed + "\"");
}

void NSCoder::encodePoint(NSPoint point) {
  encodeBits(coordinateType, std::bit_cast<uint32_t>(point.x));
  encodeBits(coordinateType, std::bit_cast<uint32_t>(point.y));
}

NSPoint NSCoder::decodePoint() {
  const auto coordinate = [this] {
    const auto value = std::bit_cast<float>(static_cast<uint32_t>(decodeBits(coordinateType)));
    if (!std::isfinite(value)) fail("a coordinate that is not finite, expected a finite one");
    return value;
  };
  const float x = coordinate();
  return {x, coordinate()};
}
