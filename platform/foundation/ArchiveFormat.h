#pragma once

#include <cstdint>
#include <string_view>

/// An archive: the head, then one object. A value is its type's letter and its bytes, the lowest first. An
/// object is the letter '@' and its number of four bytes, 0 for null; a number not seen before, the next in
/// order, is followed by the length (a byte) and text of the class's name, the object's own values and the
/// letter that ends it.
namespace archiveFormat {

inline constexpr std::string_view head = "tovin archive 1\n";
inline constexpr uint64_t null = 0;
inline constexpr char endOfObject = ';';
inline constexpr size_t longestName = 255;

}  // namespace archiveFormat
