#pragma once

#include <string_view>

class NSObject;

/// Reports broken promises: programming errors and descriptions that cannot be read.
class NSAssertionHandler {
 public:
  static NSAssertionHandler& currentHandler();

  /// Logs "*** Assertion failure in -[Class method], file:line: description" and throws NSException
  /// (NSInternalInconsistencyException, the description as reason).
  [[noreturn]] void handleFailureInMethod(std::string_view method, const NSObject* object,
                                          std::string_view file, int lineNumber,
                                          std::string_view description);
};
