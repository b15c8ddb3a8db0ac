#include "NSBundle.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <pugixml.hpp>

#include "Class.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::weak_ptr<NSBundle>>& openBundles() {
  static std::vector<std::weak_ptr<NSBundle>> bundles;
  return bundles;
}

}  // namespace

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(const std::string& path, std::string& error) {
  for (auto& bundle : allBundles())
    if (bundle->path_ == path) return bundle;

  error.clear();
  const std::string file = path + "/Contents/Info.xml";
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_file(file.c_str());
  if (!parsed) {
    error = file + ": " + parsed.description();
    return nullptr;
  }
  const auto bundle = std::make_shared<NSBundle>(Passkey());
  bundle->path_ = path;
  const pugi::xml_node root = document.child("bundle");
  const auto value = [&](const char* key, std::string& field) {
    field = root.attribute(key).value();
    if (field.empty() && error.empty()) error = file + ": <bundle> without \"" + key + "\"";
    return !field.empty();
  };
  if (!value("identifier", bundle->identifier_) || !value("version", bundle->version_) ||
      !value("principalClass", bundle->principalClassName_) || !value("module", bundle->module_))
    return nullptr;
  std::erase_if(openBundles(), [](const auto& weak) { return weak.expired(); });
  openBundles().push_back(bundle);
  return bundle;
}

std::vector<std::shared_ptr<NSBundle>> NSBundle::allBundles() {
  std::vector<std::shared_ptr<NSBundle>> bundles;
  for (const auto& weak : openBundles())
    if (auto bundle = weak.lock()) bundles.push_back(std::move(bundle));
  return bundles;
}

NSBundle* NSBundle::bundleForClass(const Class& c) {
  for (const auto& bundle : allBundles())
    if (std::find(bundle->classes_.begin(), bundle->classes_.end(), &c) != bundle->classes_.end())
      return bundle.get();
  return nullptr;
}

NSBundle::~NSBundle() {
  Class::removeFromList(classes_);
}

bool NSBundle::load(std::string& error) {
  if (!classes_.empty()) return true;
  const std::string file = path_ + "/Contents/Linux/" + module_;
  void* module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module) {
    error = dlerror();
    return false;
  }
  void* symbol = dlsym(module, "TovinBundleClasses");
  if (!symbol) {
    error = file + ": exports no function TovinBundleClasses";
    return false;
  }
  loadLinked(reinterpret_cast<BundleClassesFunction>(symbol));
  if (!principalClass()) {
    error = file + ": no class " + principalClassName_ + ", which Info.xml names as the principal class";
    return false;
  }
  return true;
}

void NSBundle::loadLinked(BundleClassesFunction classes) {
  classes(classes_);
  Class::addToList(classes_);
}

std::string NSBundle::resourcePath() const {
  return path_ + "/Contents/Resources";
}

const Class* NSBundle::principalClass() const {
  for (const Class* c : classes_)
    if (c->name() == principalClassName_) return c;
  return nullptr;
}

std::string NSBundle::pathForImageResource(std::string_view name) const {
  return pathForResource_ofType(name, "png");
}

std::string NSBundle::pathForResource_ofType(std::string_view name, std::string_view type) const {
  const std::string file = resourcePath() + "/" + std::string(name) + "." + std::string(type);
  return fs::exists(file) ? file : std::string();
}
