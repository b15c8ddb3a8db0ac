#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class Class;

/// A folder NAME.bundle with Contents/Info.xml (identifier, version, principal class, name of the module),
/// Contents/Linux/MODULE and Contents/Resources/. Main thread.
///
/// A module exports one C function, `TovinBundleClasses`, of the type BundleClassesFunction, which names
/// every class record of the module: nothing depends on static initialisers.
class NSBundle {
 public:
  using BundleClassesFunction = void (*)(std::vector<const Class*>& classes);

  /// Reads Info.xml; null with a message in `error` (what, where, what was expected) when it cannot.
  /// The same folder gives the same bundle.
  static std::shared_ptr<NSBundle> bundleWithPath(const std::string& path, std::string& error);
  /// The bundle whose module registered the class; null for classes of the platform itself.
  static NSBundle* bundleForClass(const Class& c);

  /// Every bundle that somebody holds, in order of opening.
  static std::vector<std::shared_ptr<NSBundle>> allBundles();

  /// For bundleWithPath alone.
  struct Passkey {
   private:
    friend NSBundle;
    explicit Passkey() = default;
  };
  explicit NSBundle(Passkey) {}
  ~NSBundle();

  /// Loads the module and lists its classes. A module is never unloaded. False with a message on failure.
  bool load(std::string& error);
  /// Instead of load(), for a program that holds the module's code itself.
  void loadLinked(BundleClassesFunction classes);

  const std::string& bundlePath() const { return path_; }
  const std::string& identifier() const { return identifier_; }
  const std::string& version() const { return version_; }
  std::string resourcePath() const;
  /// Null before load() and when the module has no class of that name.
  const Class* principalClass() const;

  /// Full path of an image by its name without extension and scale suffix; empty when absent.
  std::string pathForImageResource(std::string_view name) const;
  /// Full path of Resources/NAME.TYPE; empty when absent.
  std::string pathForResource_ofType(std::string_view name, std::string_view type) const;

 private:
  std::string path_;
  std::string identifier_;
  std::string version_;
  std::string principalClassName_;
  std::string module_;
  std::vector<const Class*> classes_;
};
