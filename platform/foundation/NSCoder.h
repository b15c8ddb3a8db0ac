#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "Class.h"
#include "NSGeometry.h"

inline constexpr const char* NSInconsistentArchiveException = "NSInconsistentArchiveException";

/// A sequential archive, as the objects in it see it: values are read in exactly the order in which they
/// were written, each as what it was written as. NSArchiver writes one, NSUnarchiver reads one; to read from
/// the former or write to the latter is a programming error, reported to the assertion handler.
///
/// A class is archived when its record says so (Class::archived) and stands in the class list; its
/// encodeWithCoder: and its constructor from a coder begin with those of its superclass. What cannot be read
/// throws an NSException that says where and what was expected. Main thread.
class NSCoder {
 public:
  NSCoder() = default;
  NSCoder(const NSCoder&) = delete;
  NSCoder& operator=(const NSCoder&) = delete;
  virtual ~NSCoder() = default;

  /// Types: "d" for a double, "i" for an int, "c" for a bool.
  template <class T>
  void encodeValueOfObjCType_at(const char* type, const T* value) {
    checkType(type, letter<T>());
    if constexpr (std::is_same_v<T, double>)
      encodeBits(letter<T>(), std::bit_cast<uint64_t>(*value));
    else
      encodeBits(letter<T>(), static_cast<uint64_t>(*value));
  }
  template <class T>
  void decodeValueOfObjCType_at(const char* type, T* value) {
    checkType(type, letter<T>());
    const uint64_t bits = decodeBits(letter<T>());
    if constexpr (std::is_same_v<T, double>)
      *value = std::bit_cast<double>(bits);
    else
      *value = static_cast<T>(bits);
  }
  void encodePoint(NSPoint point);
  /// Its coordinates are finite.
  NSPoint decodePoint();

  /// The same object again is the same object when it is read. Null may be written. A class that is not
  /// archived throws.
  virtual void encodeObject(const NSObject* object) = 0;
  /// An object that contains itself cannot be read.
  virtual std::shared_ptr<NSObject> decodeObject() = 0;
  /// Neither null nor an object of another class can be read here.
  template <class T>
  std::shared_ptr<T> decodeObjectOfClass() {
    const auto object = std::dynamic_pointer_cast<T>(decodeObject());
    if (!object) fail("expected an object of class " + T::record().name());
    return object;
  }
  /// For a decoder: what was read last is not what was expected.
  [[noreturn]] virtual void fail(const std::string& message) const;

 protected:
  static constexpr char objectType = '@', coordinateType = 'f';
  /// How many bytes a value of that type has in the archive, the lowest first.
  static size_t sizeOfType(char type);

  virtual void encodeBits(char type, uint64_t bits) = 0;
  virtual uint64_t decodeBits(char type) = 0;

 private:
  template <class T>
  static constexpr char letter() {
    static_assert(std::is_same_v<T, double> || std::is_same_v<T, int> || std::is_same_v<T, bool>);
    return std::is_same_v<T, double> ? 'd' : std::is_same_v<T, int> ? 'i' : 'c';
  }
  static void checkType(std::string_view given, char needed);
};
