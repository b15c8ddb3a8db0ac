#pragma once

#include <string>
#include <unordered_map>

#include "NSCoder.h"

/// Writes an object, and all that it refers to, to an archive.
class NSArchiver : public NSCoder {
 public:
  static std::string archivedDataWithRootObject(const NSObject& root);
  /// Throws also when the file cannot be written.
  static void archiveRootObject_toFile(const NSObject& root, const std::string& file);

  void encodeObject(const NSObject* object) override;
  std::shared_ptr<NSObject> decodeObject() override;

 private:
  NSArchiver();
  void encodeBits(char type, uint64_t bits) override;
  uint64_t decodeBits(char type) override;

  std::string data_;
  std::unordered_map<const NSObject*, uint64_t> numbers_;  // of the objects that were written
};
