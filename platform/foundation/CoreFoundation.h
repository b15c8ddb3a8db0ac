#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Counted objects of the C-level interfaces: strings and lists of strings. A "create" or "copy" function
/// gives one reference, which the caller releases with CFRelease. Any thread, but not the audio thread.
struct CFStringObject;
struct CFArrayObject;
using CFStringRef = const CFStringObject*;
using CFArrayRef = const CFArrayObject*;

enum CFStringEncoding : unsigned { kCFStringEncodingMacRoman = 0, kCFStringEncodingUTF8 = 0x08000100 };

/// Null when the bytes are not text in that encoding.
CFStringRef CFStringCreateWithCString(const char* cString, CFStringEncoding encoding);
/// The text in UTF-8; the empty string for null.
const std::string& CFStringGetText(CFStringRef string);

/// A list of strings; it holds a reference to each.
CFArrayRef CFArrayCreateWithStrings(const std::vector<std::string>& texts);
size_t CFArrayGetCount(CFArrayRef array);
/// Not a reference of the caller's; valid while the list lives.
CFStringRef CFArrayGetStringAtIndex(CFArrayRef array, size_t index);

void CFRetain(CFStringRef string);
void CFRetain(CFArrayRef array);
/// Gives a reference back; null is ignored.
void CFRelease(CFStringRef string);
void CFRelease(CFArrayRef array);
