#include "CoreFoundation.h"

#include <atomic>
#include <memory>
#include <string_view>

#include "MacRoman.h"

struct CFStringObject {
  mutable std::atomic<int> references{1};
  std::string text;
};

struct CFArrayObject {
  mutable std::atomic<int> references{1};
  std::vector<CFStringRef> strings;
};

namespace {

CFStringRef makeString(std::string text) {
  auto* string = std::make_unique<CFStringObject>().release();  // lives until its last CFRelease
  string->text = std::move(text);
  return string;
}

/// Shortest forms only, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const size_t length = lead < 0x80   ? 1
                          : lead < 0xC2 ? 0
                          : lead < 0xE0 ? 2
                          : lead < 0xF0 ? 3
                          : lead < 0xF5 ? 4
                                        : 0;
    if (length == 0 || i + length > text.size()) return false;
    unsigned c = length == 1 ? lead : lead & (0x7Fu >> length);
    for (size_t k = 1; k < length; ++k) {
      const auto byte = static_cast<unsigned char>(text[i + k]);
      if ((byte & 0xC0) != 0x80) return false;
      c = c << 6 | (byte & 0x3F);
    }
    if ((length == 3 && c < 0x800) || (length == 4 && c < 0x10000) || c > 0x10FFFF ||
        (c >= 0xD800 && c < 0xE000))
      return false;
    i += length;
  }
  return true;
}

}  // namespace

CFStringRef CFStringCreateWithCString(const char* cString, CFStringEncoding encoding) {
  if (!cString) return nullptr;
  if (encoding == kCFStringEncodingMacRoman) return makeString(foundation::utf8FromMacRoman(cString));
  return isUtf8(cString) ? makeString(cString) : nullptr;
}

const std::string& CFStringGetText(CFStringRef string) {
  static const std::string empty;
  return string ? string->text : empty;
}

CFArrayRef CFArrayCreateWithStrings(const std::vector<std::string>& texts) {
  auto* array = std::make_unique<CFArrayObject>().release();
  for (const std::string& text : texts) array->strings.push_back(makeString(text));
  return array;
}

size_t CFArrayGetCount(CFArrayRef array) {
  return array ? array->strings.size() : 0;
}

CFStringRef CFArrayGetStringAtIndex(CFArrayRef array, size_t index) {
  return array->strings.at(index);
}

void CFRetain(CFStringRef string) {
  if (string) ++string->references;
}

void CFRetain(CFArrayRef array) {
  if (array) ++array->references;
}

void CFRelease(CFStringRef string) {
  if (string && --string->references == 0) std::unique_ptr<const CFStringObject> last(string);
}

void CFRelease(CFArrayRef array) {
  if (!array || --array->references != 0) return;
  for (CFStringRef string : array->strings) CFRelease(string);
  std::unique_ptr<const CFArrayObject> last(array);
}
