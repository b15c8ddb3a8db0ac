#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "NSBundle.h"

/// A bundle on disk made for one test, without files at first, in a temporary folder that goes with it.
class ScratchBundle {
 public:
  ScratchBundle() { std::filesystem::create_directories(contents_ / "Resources"); }
  ~ScratchBundle() { std::filesystem::remove_all(contents_.parent_path().parent_path()); }
  ScratchBundle(const ScratchBundle&) = delete;
  ScratchBundle& operator=(const ScratchBundle&) = delete;

  /// What a sound Info.xml holds: version "1.2", a module "none.so" that is not there.
  static std::string info(const std::string& principalClass) {
    return R"(<bundle identifier="org.example.test" version="1.2" module="none.so" principalClass=")" +
           principalClass + R"("/>)";
  }

  /// The full path of a file of the bundle, given as "Info.xml" or "Resources/face.png".
  std::string file(const std::string& name) const { return contents_ / name; }
  void write(const std::string& name, const std::string& bytes) const {
    std::ofstream(contents_ / name, std::ios::binary) << bytes;
  }
  /// As NSBundle::bundleWithPath.
  std::shared_ptr<NSBundle> open(std::string& error) const {
    return NSBundle::bundleWithPath(contents_.parent_path(), error);
  }

 private:
  static std::filesystem::path newFolder() {
    std::string folder = std::filesystem::temp_directory_path() / "tovin-XXXXXX";
    if (!mkdtemp(folder.data())) throw std::runtime_error("no temporary folder");
    return folder;
  }

  std::filesystem::path contents_ = newFolder() / "Scratch.bundle" / "Contents";
};
