#pragma once

#include <exception>
#include <functional>
#include <string>
#include <utility>

inline constexpr const char* NSInternalInconsistencyException = "NSInternalInconsistencyException";

/// What the assertion handler throws. Never crosses a C boundary: see NSGuardCallback.
class NSException : public std::exception {
 public:
  NSException(std::string name, std::string reason) : name_(std::move(name)), reason_(std::move(reason)) {}
  const std::string& name() const { return name_; }
  const std::string& reason() const { return reason_; }
  const char* what() const noexcept override { return reason_.c_str(); }

 private:
  std::string name_;
  std::string reason_;
};

/// Runs one callback at a boundary that exceptions must not cross (an event, a timer, a listener, a
/// render, the factory call): an exception is logged with `where`, once, and the answer is
/// false.
bool NSGuardCallback(const char* where, const std::function<void()>& callback) noexcept;
