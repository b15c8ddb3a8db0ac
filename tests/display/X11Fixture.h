#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "NSRunLoop.h"
#include "X11Display.h"
#include "X11Headers.h"
#include "XServer.h"

#define Display XConnection
#include <X11/XKBlib.h>
#undef Display

/// What a window was told, as short strings.
class Recorder final : public DisplayClient {
 public:
  using Log = std::vector<std::string>;
  Log takeInput() { return std::exchange(input_, {}); }
  Log takeWindow() { return std::exchange(window_, {}); }
  /// Sum of all drags, "x,y".
  std::string motion() const;

  NSEvent last;
  NSPoint pointer;  // without a press
  NSRect frame;
  std::vector<NSRect> exposed;
  std::function<void(const NSEvent&)> onEvent;

 private:
  void displayEvent(const NSEvent& event) override;
  void displayPointerMoved(NSPoint at) override { pointer = at; }
  void displayLostPointer() override { input_.push_back("lost"); }
  void displayExposed(NSRect rect) override { exposed.push_back(rect); }
  void displayChangedFrame(NSRect changed) override { frame = changed; }
  void displayChangedVisibility(bool visible) override { window_.push_back(visible ? "shown" : "hidden"); }
  void displayChangedKeyboard(bool focused) override { window_.push_back(focused ? "keys" : "no keys"); }
  void displayClosed() override { window_.push_back("closed"); }

  Log input_;
  Log window_;
  float sumX_ = 0;
  float sumY_ = 0;
};

/// Somebody else at the same server: the user's hands, a host, another program.
class X11User {
 public:
  X11User();
  ~X11User();
  XConnection* x() const { return x_; }
  Window root() const { return DefaultRootWindow(x_); }

  void warpTo(int x, int y);    // without device motion
  void moveBy(int dx, int dy);  // with
  void press(unsigned button = 1);
  void release(unsigned button = 1);
  void click(unsigned button = 1);
  void hold(KeySym symbol);
  void letGo(KeySym symbol);
  void type(KeySym symbol);
  std::string pointer() const;  // "x,y" in the root window
  Window makeWindow(int x, int y, int width, int height);
  /// The colour on the screen, 0xrrggbb.
  unsigned long colorAt(int x, int y) const;
  void closePolitely(Window window);
  /// Everything that any client has on the server.
  unsigned resources() const;

 private:
  XConnection* x_;
};

/// A server of its own for the tests of this program, and a display on it.
class X11Test : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  void openDisplay(float scale = 1);
  /// Lets everything that was done so far arrive.
  void settle();
  std::unique_ptr<DisplayWindow> open(Recorder& client, DisplayWindowOptions options);
  std::unique_ptr<DisplayWindow> open(Recorder& client, NSRect frame);
  std::unique_ptr<DisplayWindow> embed(Recorder& client, Window parent);

  std::unique_ptr<X11User> user;
  std::unique_ptr<X11Display> display;
};

inline constexpr int screenWidth = XServer::width;
inline constexpr int screenHeight = XServer::height;
