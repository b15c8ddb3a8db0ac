#include "InterfaceDescription.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <memory>
#include <pugixml.hpp>
#include <sstream>
#include <utility>
#include <vector>

#include "Class.h"
#include "NSBundle.h"
#include "NSLog.h"
#include "NSPopUpButton.h"
#include "NSView.h"
#include "NumberText.h"

namespace {

constexpr double farthest = 4096;  // points; what lies or reaches beyond was meant otherwise

/// What is wrong, without the file's name.
struct DescriptionError {
  ptrdiff_t offset;
  std::string message;
};

class Loader {
 public:
  explicit Loader(NSObject& owner) : owner_(owner) {}
  Loader(const Loader&) = delete;
  Loader& operator=(const Loader&) = delete;
  /// Gives the owner back what its outlets held, if the loading failed.
  ~Loader() {
    for (const auto& [outlet, object] : before_) outlet->connect(owner_, object);
  }

  void load(const pugi::xml_document& document) {
    const pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != "interface")
      fail(root, "<" + std::string(root.name()) + ">, expected <interface>");
    for (const pugi::xml_node node : root.children()) {
      if (isNamed(node, "menu"))
        makeMenu(node, topLevels_.empty() ? owner_ : *topLevels_.back().view);
      else
        makeView(node, nullptr, nullptr);
    }
    checkRequiredOutlets();
    connectAll();
    static const SEL awake = NSSelectorFromString("awakeFromNib");
    for (const auto& view : views_) NSPerformIfAnswered(view.get(), awake, nullptr);
    before_.clear();
  }

 private:
  struct Connection {
    pugi::xml_node node;
    NSObject* holder;
    const Class::Outlet* outlet;
    std::shared_ptr<NSObject> object;
  };
  struct TopLevel {
    pugi::xml_node node;
    NSObject* view;
  };

  [[noreturn]] static void fail(pugi::xml_node node, std::string message) {
    throw DescriptionError{node.offset_debug(), std::move(message)};
  }

  static bool isNamed(pugi::xml_node node, std::string_view name) { return node.name() == name; }

  void makeView(pugi::xml_node node, NSView* parent, NSObject* topLevel) {
    if (!isNamed(node, "view")) fail(node, "<" + std::string(node.name()) + ">, expected <view>");
    const std::string className = node.attribute("class").value();
    const Class* c = Class::named(className);
    if (!c) fail(node, "class \"" + className + "\", expected the name of a view class");
    const auto view = std::dynamic_pointer_cast<NSView>(c->makeWithFrame(frameOf(node)));
    if (!view) fail(node, "class \"" + className + "\", expected a class of views");
    views_.push_back(view);
    setAttributes(node, *view);
    if (parent)
      parent->viewForSubviews().addSubview(view);
    else
      topLevels_.push_back({node, view.get()});
    connect(node, parent ? *topLevel : owner_, view);
    auto* popUp = dynamic_cast<NSPopUpButton*>(view.get());
    for (const pugi::xml_node child : node.children()) {
      if (popUp && isNamed(child, "item"))
        popUp->addItemWithTitle(itemTitle(child));
      else
        makeView(child, view.get(), parent ? topLevel : view.get());
    }
  }

  void makeMenu(pugi::xml_node node, NSObject& holder) {
    checkOnlyAttribute(node, "outlet");
    const auto menu = std::make_shared<NSMenu>();
    menus_.push_back(menu);
    for (const pugi::xml_node child : node.children()) {
      if (!isNamed(child, "item")) fail(child, "<" + std::string(child.name()) + ">, expected <item>");
      menu->addItemWithTitle(itemTitle(child));
    }
    connect(node, holder, menu);
  }

  static std::string itemTitle(pugi::xml_node node) {
    checkOnlyAttribute(node, "title");
    if (node.first_child()) fail(node.first_child(), "something in an <item>, expected nothing");
    return node.attribute("title").value();
  }

  static void checkOnlyAttribute(pugi::xml_node node, const std::string& name) {
    const auto given = node.attributes();
    const bool isAlone = given.begin() != given.end() && given.begin()->name() == name &&
                         std::next(given.begin()) == given.end();
    if (!isAlone) fail(node, "<" + std::string(node.name()) + ">, expected one attribute: " + name);
  }

  static NSRect frameOf(pugi::xml_node node) {
    const std::string text = node.attribute("frame").value();
    std::istringstream words(text);
    std::vector<float> numbers;
    for (std::string word; words >> word;) {
      double value;
      if (!foundation::wholeNumberText(word, value) || std::abs(value) > farthest) break;
      numbers.push_back(static_cast<float>(value));
    }
    if (numbers.size() != 4 || !words.eof() || !(numbers[2] > 0) || !(numbers[3] > 0))
      fail(node, "frame \"" + text +
                     "\", expected \"x y width height\" with a positive size, no number beyond " +
                     foundation::fixedText(farthest, 0));
    return NSMakeRect(numbers[0], numbers[1], numbers[2], numbers[3]);
  }

  static void setAttributes(pugi::xml_node node, NSView& view) {
    for (const pugi::xml_attribute given : node.attributes()) {
      const std::string_view name = given.name();
      if (name == "class" || name == "frame" || name == "outlet") continue;
      const Class::Attribute* attribute = view.isa().attributeNamed(name);
      if (!attribute) {
        std::string known;
        for (const auto& row : view.isa().attributes()) known += " " + row.name;
        fail(node, "attribute \"" + std::string(name) + "\" of " + view.isa().name() +
                       ", expected one of: class frame outlet" + known);
      }
      const std::string expected = attribute->set(view, given.value());
      if (!expected.empty())
        fail(node, std::string(name) + "=\"" + given.value() + "\", expected " + expected);
    }
  }

  void connect(pugi::xml_node node, NSObject& holder, const std::shared_ptr<NSObject>& object) {
    const pugi::xml_attribute given = node.attribute("outlet");
    if (!given) return;
    const std::string name = given.value();
    const Class::Outlet* outlet = holder.isa().outletNamed(name);
    if (!outlet) {
      std::string known;
      for (const auto& row : holder.isa().outlets()) known += " " + row.name;
      fail(node, "outlet \"" + name + "\" of " + holder.isa().name() +
                     (known.empty() ? ", which has none" : ", expected one of:" + known));
    }
    const bool twice = std::any_of(connections_.begin(), connections_.end(), [&](const Connection& c) {
      return c.holder == &holder && c.outlet == outlet;
    });
    if (twice) fail(node, "outlet \"" + name + "\" is connected twice, expected once");
    connections_.push_back({node, &holder, outlet, object});
  }

  void connectAll() {
    for (const Connection& c : connections_) {
      if (c.holder == &owner_) {
        NSObject* held = c.outlet->connected(owner_);
        before_.emplace_back(c.outlet, held ? held->weak_from_this().lock() : nullptr);
      }
      if (!c.outlet->connect(*c.holder, c.object))
        fail(c.node, "outlet \"" + c.outlet->name + "\" of " + c.holder->isa().name() +
                         " does not take an object of class " + c.object->isa().name());
    }
  }

  void checkRequiredOutlets() const {
    for (const TopLevel& top : topLevels_) {
      for (const Class::Outlet& outlet : top.view->isa().outlets()) {
        const bool connected = std::any_of(
            connections_.begin(), connections_.end(),
            [&](const Connection& c) { return c.holder == top.view && c.outlet->name == outlet.name; });
        if (outlet.required && !connected)
          fail(top.node, "outlet \"" + outlet.name + "\" of " + top.view->isa().name() +
                             " is not connected, expected a view with outlet=\"" + outlet.name + "\"");
      }
    }
  }

  NSObject& owner_;
  std::vector<std::shared_ptr<NSView>> views_;  // in order of the description
  std::vector<std::shared_ptr<NSMenu>> menus_;
  std::vector<TopLevel> topLevels_;
  std::vector<Connection> connections_;
  std::vector<std::pair<const Class::Outlet*, std::shared_ptr<NSObject>>> before_;  // of the owner
};

std::string contentsOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream contents;
  contents << stream.rdbuf();
  return contents.str();
}

}  // namespace

bool loadNibNamed_owner(std::string_view name, NSObject& owner) {
  const NSBundle* bundle = NSBundle::bundleForClass(owner.isa());
  const std::string file = bundle ? bundle->pathForResource_ofType(name, "xml") : std::string();
  if (file.empty()) {
    NSLog(std::string(name) + ".xml: no such interface description");
    return false;
  }
  const std::string text = contentsOf(file);
  const auto report = [&](ptrdiff_t offset, const std::string& message) {
    const auto line =
        1 + std::count(text.begin(), text.begin() + std::clamp<ptrdiff_t>(offset, 0, std::ssize(text)), '\n');
    NSLog(file + ":" + std::to_string(line) + ": " + message);
    return false;
  };
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(text.data(), text.size());
  if (!parsed) return report(parsed.offset, std::string(parsed.description()) + ", expected XML");
  try {
    Loader(owner).load(document);
    return true;
  } catch (const DescriptionError& error) {
    return report(error.offset, error.message);
  }
}
