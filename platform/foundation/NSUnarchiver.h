#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "NSCoder.h"

/// Reads an archive. Whatever is wrong with it, and a file that cannot be read, throws an NSException
/// (NSInconsistentArchiveException) whose reason is "NAME: byte N: what is wrong, what was expected"; nothing
/// that was read by then stays.
class NSUnarchiver : public NSCoder {
 public:
  /// The root object. `name` stands for the data in messages.
  static std::shared_ptr<NSObject> unarchiveObjectWithData(std::string_view data,
                                                           const std::string& name = "archive");
  static std::shared_ptr<NSObject> unarchiveObjectWithFile(const std::string& file);

  void encodeObject(const NSObject* object) override;
  std::shared_ptr<NSObject> decodeObject() override;

 private:
  NSUnarchiver(std::string_view data, const std::string& name) : data_(data), name_(name) {}
  void encodeBits(char type, uint64_t bits) override;
  uint64_t decodeBits(char type) override;
  [[noreturn]] void fail(const std::string& message) const override;
  std::string_view take(size_t bytes);
  void expect(std::string_view text, const std::string& meaning);
  std::shared_ptr<NSObject> decodeNewObject();

  std::string_view data_;
  const std::string& name_;
  size_t position_ = 0;
  size_t itemStart_ = 0;  // where what is being read begins
  int depth_ = 0;
  std::vector<std::shared_ptr<NSObject>> objects_;  // by number; null until they are complete
};
