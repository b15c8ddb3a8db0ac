#include "WaylandDesktop.h"

#include <unistd.h>
#include <wayland-client.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace {

constexpr unsigned nobody = 65534;  // sway refuses to run as root

// What a hand needs of wlroots' protocol "wlr virtual pointer unstable", version 1.
const wl_interface* plain[8] = {};
const wl_message pointerRequests[] = {{"motion", "uff", plain},
                                      {"motion_absolute", "uuuuu", plain},
                                      {"button", "uuu", plain},
                                      {"axis", "uuf", plain},
                                      {"frame", "", plain}};
enum PointerRequest : uint32_t { motion, motionAbsolute, buttonState, axis, frame };
const wl_interface pointerInterface{"zwlr_virtual_pointer_v1", 1, 5, pointerRequests, 0, nullptr};
const wl_interface* made[] = {&wl_seat_interface, &pointerInterface};
const wl_message managerRequests[] = {{"create_virtual_pointer", "?on", made}};
const wl_interface managerInterface{"zwlr_virtual_pointer_manager_v1", 1, 1, managerRequests, 0, nullptr};

constexpr unsigned leftButton = 0x110;  // as the kernel names it

uint32_t now() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

std::vector<std::string> command(const std::string& configuration) {
  std::vector<std::string> words{"sway", "-c", configuration};
  const std::string id = std::to_string(nobody);
  if (geteuid() == 0)
    words.insert(words.begin(), {"setpriv", "--reuid=" + id, "--regid=" + id, "--clear-groups"});
  return words;
}

std::string configuration() {
  std::ostringstream text;
  text << "output HEADLESS-1 resolution " << WaylandDesktop::width << "x" << WaylandDesktop::height << "\n"
       << "seat seat0 pointer_constraint enable\nxwayland force\n"
       << "default_border none\ndefault_floating_border none\n"
       << "exec " << (geteuid() == 0 ? "xhost +si:localuser:root > /dev/null && " : "")
       << "echo desktop $DISPLAY $WAYLAND_DISPLAY end\n";
  return text.str();
}

}  // namespace

struct WaylandDesktop::Hand {
  explicit Hand(const std::string& socket) : display(wl_display_connect(socket.c_str())) {
    if (!display) throw std::runtime_error("no connection to sway at " + socket);
    registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, this);
    wl_display_roundtrip(display);
    if (!manager) throw std::runtime_error("sway has no virtual pointers");
    pointer = wl_proxy_marshal_flags(manager, 0, &pointerInterface, 1, 0, seat, nullptr);
  }
  ~Hand() {
    for (wl_proxy* proxy :
         {pointer, manager, reinterpret_cast<wl_proxy*>(seat), reinterpret_cast<wl_proxy*>(registry)})
      if (proxy) wl_proxy_destroy(proxy);
    wl_display_disconnect(display);
  }
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  template <class... Arguments>
  void ask(PointerRequest request, Arguments... arguments) {
    wl_proxy_marshal_flags(pointer, request, nullptr, 1, 0, now(), arguments...);
    wl_proxy_marshal_flags(pointer, frame, nullptr, 1, 0);
    wl_display_roundtrip(display);
  }

  static void found(void* self, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
    auto& hand = *static_cast<Hand*>(self);
    if (std::strcmp(interface, managerInterface.name) == 0)
      hand.manager = static_cast<wl_proxy*>(wl_registry_bind(registry, name, &managerInterface, 1));
    if (std::strcmp(interface, wl_seat_interface.name) == 0)
      hand.seat = static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
  }
  static void lost(void*, wl_registry*, uint32_t) {}
  static constexpr wl_registry_listener listener{found, lost};

  wl_display* display;
  wl_registry* registry = nullptr;
  wl_seat* seat = nullptr;
  wl_proxy* manager = nullptr;
  wl_proxy* pointer = nullptr;
};

WaylandDesktop::WaylandDesktop() {
  folder_ = std::filesystem::temp_directory_path() / "tovin-sway-XXXXXX";
  if (!mkdtemp(folder_.data())) throw std::runtime_error("no folder " + folder_);
  const std::string file = folder_ + "/config";
  std::ofstream(file) << configuration();
  if (geteuid() == 0 && (chown(folder_.c_str(), nobody, nobody) || chown(file.c_str(), nobody, nobody)))
    throw std::runtime_error("cannot hand on " + folder_);
  sway_ = std::make_unique<ChildProcess>(
      command(file), std::vector<std::string>{"XDG_RUNTIME_DIR=" + folder_, "HOME=" + folder_,
                                              "WAYLAND_DISPLAY=", "DISPLAY=", "WLR_BACKENDS=headless",
                                              "WLR_RENDERER=pixman", "WLR_LIBINPUT_NO_DEVICES=1"});
  if (!sway_->waitForOutput(" end\n", 20))
    throw std::runtime_error("sway does not start (packages sway, xwayland): " + sway_->errors());
  std::istringstream said(sway_->output().substr(sway_->output().find("desktop ")));
  std::string word, socket;
  said >> word >> server_ >> socket;
  hand_ = std::make_unique<Hand>(folder_ + "/" + socket);
}

WaylandDesktop::~WaylandDesktop() {
  hand_.reset();
  sway_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void WaylandDesktop::pointTo(int x, int y) {
  hand_->ask(motionAbsolute, x, y, width, height);
}

void WaylandDesktop::moveBy(double dx, double dy) {
  hand_->ask(motion, wl_fixed_from_double(dx), wl_fixed_from_double(dy));
}

void WaylandDesktop::button(unsigned state) {
  hand_->ask(buttonState, leftButton, state);
}
