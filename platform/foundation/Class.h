#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "AttributeText.h"
#include "MethodThunk.h"
#include "NSGeometry.h"
#include "NSObject.h"

class NSCoder;

/// The record of one class: its name and ancestor, how one is made, which messages it answers, which
/// outlets it has and which attributes an interface description may set. Written once, beside the code
/// that it names:
///
///   const Class& Knob::record() {
///     static const Class c = Class::of<Knob>("Knob", NSView::record())
///         .answers<&Knob::knobChanged>("knobChanged:")
///         .outlet<&Knob::label>("label")
///         .attribute<&Knob::setTitle>("title");
///     return c;
///   }
///
/// A record includes everything of its ancestor; the same name again overrides.
class Class {
 public:
  struct Method {
    foundation::Call call;
  };

  struct Outlet {
    std::string name;
    bool required;
    /// Stores the object; false when it is not of the outlet's class.
    bool (*connect)(NSObject& owner, const std::shared_ptr<NSObject>& object);
    NSObject* (*connected)(NSObject& owner);
  };

  struct Attribute {
    std::string name;
    /// Parses and sets; the answer says what was expected when the text is wrong, else it is empty.
    std::string (*set)(NSObject& object, std::string_view text);
  };

  /// How objects are written to an archive and made from one.
  struct Coding {
    void (*encode)(const NSObject& object, NSCoder& coder);
    std::shared_ptr<NSObject> (*decode)(NSCoder& coder);
  };

  static Class root(std::string_view name) { return Class(name, nullptr); }

  template <class T>
  static Class of(std::string_view name, const Class& super) {
    Class c(name, &super);
    c.methods_ = super.methods_;
    c.outlets_ = super.outlets_;
    c.attributes_ = super.attributes_;
    if constexpr (std::is_abstract_v<T>) {
    } else if constexpr (std::is_constructible_v<T, NSRect>) {
      c.makeWithFrame_ = [](NSRect frame) -> std::shared_ptr<NSObject> { return std::make_shared<T>(frame); };
    } else if constexpr (std::is_default_constructible_v<T>) {
      c.make_ = []() -> std::shared_ptr<NSObject> { return std::make_shared<T>(); };
    }
    return c;
  }

  template <auto operation>
  Class&& answers(std::string_view selector) &&;
  template <auto field>
  Class&& outlet(std::string_view name) && {
    return std::move(*this).template addOutlet<field>(name, true);
  }
  template <auto field>
  Class&& optionalOutlet(std::string_view name) && {
    return std::move(*this).template addOutlet<field>(name, false);
  }
  template <auto setter>
  Class&& attribute(std::string_view name) &&;

  /// Objects of exactly this class are archived, by T::encodeWithCoder(NSCoder&) and T(NSCoder&) or by two
  /// functions. A subclass says so itself.
  template <class T>
  Class&& archived() && {
    return std::move(*this).archivedBy(
        {[](const NSObject& object, NSCoder& coder) { static_cast<const T&>(object).encodeWithCoder(coder); },
         [](NSCoder& coder) -> std::shared_ptr<NSObject> { return std::make_shared<T>(coder); }});
  }
  Class&& archivedBy(Coding coding) && {
    coding_ = coding;
    return std::move(*this);
  }

  const std::string& name() const { return name_; }
  const Class* superclass() const { return super_; }
  bool isSubclassOf(const Class& ancestor) const;

  /// Null when instances do not answer it.
  const Method* method(SEL selector) const;
  const Outlet* outletNamed(std::string_view name) const;
  const Attribute* attributeNamed(std::string_view name) const;
  /// Null when its objects are not archived.
  const Coding* coding() const { return coding_ ? &*coding_ : nullptr; }
  std::span<const Outlet> outlets() const { return outlets_; }
  std::span<const Attribute> attributes() const { return attributes_; }

  /// A new instance; null when the class is not made that way.
  std::shared_ptr<NSObject> make() const { return make_ ? make_() : nullptr; }
  std::shared_ptr<NSObject> makeWithFrame(NSRect frame) const {
    return makeWithFrame_ ? makeWithFrame_(frame) : nullptr;
  }

  /// The explicit list of classes that can be made by name. A layer or module hands in its whole list;
  /// handing in the same records again changes nothing. Main thread.
  static void addToList(std::span<const Class* const> classes);
  /// Takes a module's records out again before its code goes away.
  static void removeFromList(std::span<const Class* const> classes);
  static const Class* named(std::string_view name);

 private:
  Class(std::string_view name, const Class* super) : name_(name), super_(super) {}

  template <auto field>
  Class&& addOutlet(std::string_view name, bool required) &&;

  std::string name_;
  const Class* super_;
  std::unordered_map<SEL, Method> methods_;
  std::vector<Outlet> outlets_;
  std::vector<Attribute> attributes_;
  std::optional<Coding> coding_;
  std::shared_ptr<NSObject> (*make_)() = nullptr;
  std::shared_ptr<NSObject> (*makeWithFrame_)(NSRect) = nullptr;
};

namespace foundation {

template <class Member>
struct MemberOf;
template <class T, class V>
struct MemberOf<V T::*> {
  using Owner = T;
  using Value = V;
};
template <class T, class A>
struct MemberOf<void (T::*)(A)> {
  using Owner = T;
  using Value = std::remove_cvref_t<A>;
};
template <class T, class R, class... A>
struct MemberOf<R (T::*)(A...)> {
  using Owner = T;
};
template <class T, class A>
struct MemberOf<T A::*const> : MemberOf<T A::*> {};

}  // namespace foundation

template <auto operation>
Class&& Class::answers(std::string_view selector) && {
  using Owner = typename foundation::MemberOf<decltype(operation)>::Owner;
  methods_[NSSelectorFromString(selector)] = Method{&foundation::Thunk<Owner, operation>::call};
  return std::move(*this);
}

template <auto field>
Class&& Class::addOutlet(std::string_view name, bool required) && {
  using Member = foundation::MemberOf<decltype(field)>;
  using Owner = typename Member::Owner;
  using Value = typename Member::Value;
  outlets_.push_back(Outlet{std::string(name), required,
                            [](NSObject& owner, const std::shared_ptr<NSObject>& object) {
                              Value value = foundation::Argument<Value>::from(object.get());
                              if (object && !value) return false;
                              static_cast<Owner&>(owner).*field = value;
                              return true;
                            },
                            [](NSObject& owner) -> NSObject* {
                              if constexpr (std::is_pointer_v<Value>)
                                return static_cast<Owner&>(owner).*field;
                              else
                                return (static_cast<Owner&>(owner).*field).get();
                            }});
  return std::move(*this);
}

template <auto setter>
Class&& Class::attribute(std::string_view name) && {
  using Member = foundation::MemberOf<decltype(setter)>;
  attributes_.push_back(Attribute{std::string(name), [](NSObject& object, std::string_view text) {
                                    typename Member::Value value{};
                                    std::string expected = foundation::parseAttribute(text, value);
                                    if (expected.empty())
                                      (static_cast<typename Member::Owner&>(object).*setter)(value);
                                    return expected;
                                  }});
  return std::move(*this);
}
