#include "QuilloLinux/Keyboard/X11PasteExclusion.h"

#include <xcb/xcb.h>

#include <array>
#include <string_view>

namespace quillo {

bool X11PasteExclusion::enter() {
  constexpr std::array<std::string_view, 1> names = {"_QUILLO_PASTE"};
  connection_ = X11Connection::open();
  if (!connection_) return true;
  xcb_connection_t* display = connection_->get();
  const std::uint32_t selection = internAtoms(display, names).front();
  const xcb_window_t window = xcb_generate_id(display);
  xcb_create_window(display, 0, window, connection_->root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_grab_server(display);
  const auto owner = awaitReply<xcb_get_selection_owner_reply_t>(display, xcb_get_selection_owner(display, selection));
  const bool isFree = owner && owner->owner == XCB_WINDOW_NONE;
  if (isFree) xcb_set_selection_owner(display, window, selection, XCB_CURRENT_TIME);
  xcb_ungrab_server(display);
  xcb_flush(display);
  if (!isFree) connection_.reset();
  return isFree;
}

void X11PasteExclusion::leave() {
  connection_.reset();  // and with it window and selection
}

}  // namespace quillo
