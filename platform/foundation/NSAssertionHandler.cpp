#include "NSAssertionHandler.h"

#include <string>

#include "Class.h"
#include "NSException.h"
#include "NSLog.h"

NSAssertionHandler& NSAssertionHandler::currentHandler() {
  static NSAssertionHandler handler;
  return handler;
}

void NSAssertionHandler::handleFailureInMethod(std::string_view method, const NSObject* object,
                                               std::string_view file, int lineNumber,
                                               std::string_view description) {
  const std::string className = object ? object->isa().name() : "(null)";
  NSLogOnce("*** Assertion failure in -[" + className + " " + std::string(method) + "], " + std::string(file) +
        ":" + std::to_string(lineNumber) + ": " + std::string(description));
  throw NSException(NSInternalInconsistencyException, std::string(description));
}

bool NSGuardCallback(const char* where, const std::function<void()>& callback) noexcept {
  try {
    callback();
    return true;
  } catch (const std::exception& error) {
    NSLogOnce(std::string(where) + " failed: " + error.what());
  } catch (...) {
    NSLogOnce(std::string(where) + " failed");
  }
  return false;
}
