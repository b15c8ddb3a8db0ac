// The built bundle's resources with this program's own copy of its classes, there for every test.

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "AppKitClasses.h"
#include "NSBundle.h"
#include "RegisterEffects.h"

extern "C" void TovinBundleClasses(std::vector<const Class*>& classes);

namespace {

class LinkedBundle : public testing::Environment {
 public:
  void SetUp() override {
    NSRegisterAppKitClasses();
    RegisterEffects();
    std::string error;
    bundle_ = NSBundle::bundleWithPath(TOVIN_BUNDLE, error);
    if (!bundle_) throw std::runtime_error(error);
    bundle_->loadLinked(&TovinBundleClasses);
  }
  void TearDown() override { bundle_.reset(); }

 private:
  std::shared_ptr<NSBundle> bundle_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(std::make_unique<LinkedBundle>().release());

}  // namespace
