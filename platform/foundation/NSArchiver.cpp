#include "NSArchiver.h"

#include <fstream>

#include "ArchiveFormat.h"
#include "NSAssertionHandler.h"

NSArchiver::NSArchiver() : data_(archiveFormat::head) {}

std::string NSArchiver::archivedDataWithRootObject(const NSObject& root) {
  NSArchiver archiver;
  archiver.encodeObject(&root);
  return std::move(archiver.data_);
}

void NSArchiver::archiveRootObject_toFile(const NSObject& root, const std::string& file) {
  NSArchiver archiver;
  archiver.encodeObject(&root);
  std::ofstream stream(file, std::ios::binary);
  stream << archiver.data_;
  stream.close();
  if (!stream) archiver.fail(file + ": cannot be written");
}

void NSArchiver::encodeObject(const NSObject* object) {
  if (!object) return encodeBits(objectType, archiveFormat::null);
  const auto [number, isNew] = numbers_.try_emplace(object, numbers_.size() + 1);
  encodeBits(objectType, number->second);
  if (!isNew) return;
  const std::string& name = object->isa().name();
  const Class* c = Class::named(name);
  if (!c || !c->coding() || name.size() > archiveFormat::longestName)
    fail("class " + name + " cannot be archived");
  data_ += static_cast<char>(name.size());
  data_ += name;
  c->coding()->encode(*object, *this);
  data_ += archiveFormat::endOfObject;
}

void NSArchiver::encodeBits(char type, uint64_t bits) {
  data_ += type;
  for (size_t i = 0; i < sizeOfType(type); ++i) data_ += static_cast<char>(bits >> (8 * i) & 0xFF);
}

std::shared_ptr<NSObject> NSArchiver::decodeObject() {
  decodeBits(objectType);
  return nullptr;
}

uint64_t NSArchiver::decodeBits(char) {
  NSAssertionHandler::currentHandler().handleFailureInMethod("decode", nullptr, "NSArchiver", __LINE__,
                                                             "an archive that is being written is read");
}
