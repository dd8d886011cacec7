#include "TestWindow.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

#include "QuilloLinux/X11/X11Connection.h"
#include "RunningProgram.h"

namespace quillo::test {
namespace {

xcb_visualid_t visualOfDepth(xcb_screen_t* screen, std::uint8_t depth) {
  for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0; xcb_depth_next(&depths)) {
    if (depths.data->depth != depth) continue;
    const auto visuals = xcb_depth_visuals_iterator(depths.data);
    if (visuals.rem > 0) return visuals.data->visual_id;
  }
  throw std::runtime_error("the display has no visual of this depth");
}

}  // namespace

TestWindow::TestWindow(const TestWindowOptions& options) : connection_(connectToDisplay()) {
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("no display");
  xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  root_ = screen->root;
  window_ = xcb_generate_id(connection_);
  const std::uint8_t depth = options.depth == 0 ? screen->root_depth : options.depth;
  const xcb_visualid_t visual = visualOfDepth(screen, depth);
  const xcb_colormap_t colormap = xcb_generate_id(connection_);
  xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colormap, root_, visual);
  const std::uint32_t background = options.isUnpainted ? XCB_BACK_PIXMAP_NONE : options.pixel;
  const std::uint32_t isUnmanaged = options.isUnmanaged ? 1 : 0;
  const std::array<std::uint32_t, 4> values = {background, 0, isUnmanaged, colormap};
  xcb_create_window(connection_, depth, window_, root_, static_cast<std::int16_t>(options.bounds.x),
                    static_cast<std::int16_t>(options.bounds.y), static_cast<std::uint16_t>(options.bounds.width),
                    static_cast<std::uint16_t>(options.bounds.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                    (options.isUnpainted ? XCB_CW_BACK_PIXMAP : XCB_CW_BACK_PIXEL) | XCB_CW_BORDER_PIXEL |
                        XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
                    values.data());
  setText("_NET_WM_NAME", "UTF8_STRING", options.title);
  const std::int64_t pid = options.pid < 0 ? ::getpid() : options.pid;
  if (pid != 0) setWords("_NET_WM_PID", "CARDINAL", {static_cast<std::uint32_t>(pid)});
  if (!options.type.empty()) setWords("_NET_WM_WINDOW_TYPE", "ATOM", {atom(options.type)});
  // WM_NORMAL_HINTS with "the user chose the position", so that the manager keeps it.
  std::vector<std::uint32_t> hints(18);
  hints[0] = 1;
  setWords("WM_NORMAL_HINTS", "WM_SIZE_HINTS", hints);
  if (options.isUndecorated) setWords("_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
  xcb_map_window(connection_, window_);
  sync();
}

TestWindow::~TestWindow() {
  // The display gives the window's number to the next connection; until the manager has taken note, it would take the
  // next window for this one.
  destroy();
  eventually([this] { return !isManaged(); }, 2);
  xcb_disconnect(connection_);
}

bool TestWindow::isManaged() {
  xcb_get_property_reply_t* reply = xcb_get_property_reply(
      connection_,
      xcb_get_property(connection_, 0, root_, atom("_NET_CLIENT_LIST"), XCB_GET_PROPERTY_TYPE_ANY, 0, 1024), nullptr);
  if (reply == nullptr) return false;
  const auto* windows = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
  const auto count = static_cast<std::size_t>(xcb_get_property_value_length(reply)) / sizeof(std::uint32_t);
  const bool isListed = std::find(windows, windows + count, window_) != windows + count;
  std::free(reply);
  return isListed;
}

std::uint32_t TestWindow::atom(const std::string& name) {
  xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
      connection_, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr);
  const std::uint32_t atom = reply->atom;
  std::free(reply);
  return atom;
}

void TestWindow::sync() {
  std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void TestWindow::setWords(const std::string& property, const std::string& type,
                          const std::vector<std::uint32_t>& words) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom(property), atom(type), 32,
                      static_cast<std::uint32_t>(words.size()), words.data());
  sync();
}

void TestWindow::setText(const std::string& property, const std::string& type, const std::string& text) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom(property), atom(type), 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
  sync();
}

void TestWindow::resize(std::uint32_t width, std::uint32_t height) {
  const std::array<std::uint32_t, 2> values = {width, height};
  xcb_configure_window(connection_, window_, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data());
  sync();
}

void TestWindow::fill(const ArtifactRect& area, std::uint32_t pixel) {
  const xcb_gcontext_t context = xcb_generate_id(connection_);
  xcb_create_gc(connection_, context, window_, XCB_GC_FOREGROUND, &pixel);
  const xcb_rectangle_t rectangle = {static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                                     static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height)};
  xcb_poly_fill_rectangle(connection_, window_, context, 1, &rectangle);
  xcb_free_gc(connection_, context);
  sync();
}

void TestWindow::unmap() {
  xcb_unmap_window(connection_, window_);
  sync();
}

void TestWindow::destroy() {
  xcb_destroy_window(connection_, window_);
  sync();
}

void TestWindow::ask(const std::string& message, const std::vector<std::uint32_t>& words) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window_;
  event.type = atom(message);
  std::ranges::copy(words, event.data.data32);
  xcb_send_event(connection_, 0, root_, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&event));
  sync();
}

void TestWindow::minimise() {
  constexpr std::uint32_t iconicState = 3;
  ask("WM_CHANGE_STATE", {iconicState});
}

void TestWindow::moveToDesktop(std::uint32_t desktop) {
  ask("_NET_WM_DESKTOP", {desktop, 2});
}

void TestWindow::activate() {
  ask("_NET_ACTIVE_WINDOW", {2, 0, 0});
}

}  // namespace quillo::test
