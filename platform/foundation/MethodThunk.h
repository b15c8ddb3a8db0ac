#pragma once

#include <memory>
#include <type_traits>

#include "NSObject.h"

/// How a member function becomes a message: one plain function per operation that takes the receiver and
/// up to two objects, narrows the objects to what the operation declares and calls it.
namespace foundation {

using Call = bool (*)(NSObject&, NSObject*, NSObject*);

/// Parameters of operations are `T*` (known, not owned) or `std::shared_ptr<T>` (may be kept). An object
/// of another class arrives as null, like an absent one.
template <class Parameter>
struct Argument;

template <class T>
struct Argument<T*> {
  static T* from(NSObject* object) {
    if constexpr (std::is_same_v<std::remove_const_t<T>, NSObject>)
      return object;
    else
      return dynamic_cast<T*>(object);
  }
};

template <class T>
struct Argument<std::shared_ptr<T>> {
  static std::shared_ptr<T> from(NSObject* object) {
    return object ? std::dynamic_pointer_cast<T>(object->shared_from_this()) : nullptr;
  }
};

template <class Result, class Function>
bool answer(Function&& function) {
  if constexpr (std::is_same_v<Result, bool>) return function();
  function();
  return true;
}

template <class T, auto operation>
struct Thunk;

template <class T, class Base, class R, R (Base::*operation)()>
struct Thunk<T, operation> {
  static bool call(NSObject& self, NSObject*, NSObject*) {
    return answer<R>([&] { return (static_cast<T&>(self).*operation)(); });
  }
};

template <class T, class Base, class R, class A, R (Base::*operation)(A)>
struct Thunk<T, operation> {
  static bool call(NSObject& self, NSObject* first, NSObject*) {
    using P = std::remove_cvref_t<A>;
    return answer<R>([&] { return (static_cast<T&>(self).*operation)(Argument<P>::from(first)); });
  }
};

template <class T, class Base, class R, class A, class B, R (Base::*operation)(A, B)>
struct Thunk<T, operation> {
  static bool call(NSObject& self, NSObject* first, NSObject* second) {
    using P = std::remove_cvref_t<A>;
    using Q = std::remove_cvref_t<B>;
    return answer<R>([&] {
      return (static_cast<T&>(self).*operation)(Argument<P>::from(first), Argument<Q>::from(second));
    });
  }
};

}  // namespace foundation
