#include "NSUnarchiver.h"

#include <fstream>
#include <sstream>

#include "ArchiveFormat.h"
#include "NSAssertionHandler.h"
#include "NSException.h"

namespace {

constexpr int deepest = 100;  // objects in objects

}  // namespace

std::shared_ptr<NSObject> NSUnarchiver::unarchiveObjectWithData(std::string_view data,
                                                                const std::string& name) {
  NSUnarchiver coder(data, name);
  coder.expect(archiveFormat::head, "an archive");
  auto root = coder.decodeObject();
  coder.itemStart_ = coder.position_;
  if (!root) coder.fail("no object, expected one");
  if (coder.position_ != data.size()) coder.fail("something after the object, expected the end");
  return root;
}

std::shared_ptr<NSObject> NSUnarchiver::unarchiveObjectWithFile(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream contents;
  contents << stream.rdbuf();
  if (!stream) throw NSException(NSInconsistentArchiveException, file + ": cannot be read");
  return unarchiveObjectWithData(contents.str(), file);
}

void NSUnarchiver::fail(const std::string& message) const {
  NSCoder::fail(name_ + ": byte " + std::to_string(itemStart_) + ": " + message);
}

std::string_view NSUnarchiver::take(size_t bytes) {
  if (data_.size() - position_ < bytes) fail("the end, expected more");
  position_ += bytes;
  return data_.substr(position_ - bytes, bytes);
}

void NSUnarchiver::expect(std::string_view text, const std::string& meaning) {
  itemStart_ = position_;
  if (take(text.size()) != text) fail("something else, expected " + meaning);
}

uint64_t NSUnarchiver::decodeBits(char type) {
  itemStart_ = position_;
  const char found = take(1)[0];
  if (found != type) fail(std::string("a value of type \"") + found + "\", expected \"" + type + "\"");
  const std::string_view bytes = take(sizeOfType(type));
  uint64_t bits = 0;
  for (size_t i = 0; i < bytes.size(); ++i)
    bits |= static_cast<uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
  return bits;
}

std::shared_ptr<NSObject> NSUnarchiver::decodeObject() {
  const uint64_t number = decodeBits(objectType);
  if (number == archiveFormat::null) return nullptr;
  if (number == objects_.size() + 1) return decodeNewObject();
  if (number > objects_.size()) fail("object " + std::to_string(number) + ", expected one that was read");
  if (!objects_[number - 1]) fail("an object inside itself, expected a complete one");
  return objects_[number - 1];
}

std::shared_ptr<NSObject> NSUnarchiver::decodeNewObject() {
  const size_t index = objects_.size();
  objects_.emplace_back();
  const auto length = static_cast<unsigned char>(take(1)[0]);
  const std::string className(take(length));
  const Class* c = Class::named(className);
  if (!c || !c->coding()) fail("class \"" + className + "\", expected one that is archived");
  if (++depth_ > deepest) fail("too many objects in each other");
  auto made = c->coding()->decode(*this);
  --depth_;
  expect({&archiveFormat::endOfObject, 1}, "the end of an object of class " + className);
  objects_[index] = made;
  return made;
}

void NSUnarchiver::encodeObject(const NSObject*) {
  encodeBits(objectType, archiveFormat::null);
}

void NSUnarchiver::encodeBits(char, uint64_t) {
  NSAssertionHandler::currentHandler().handleFailureInMethod("encode", nullptr, "NSUnarchiver", __LINE__,
                                                             "an archive that is being read is written");
}
