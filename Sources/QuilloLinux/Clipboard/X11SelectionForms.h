#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Clipboard/Pasteboard.h"

namespace quillo {

/// One type that a selection's owner gives out, as it travels: a property of some type and item size.
struct X11SelectionForm {
  std::string target;        ///< what is asked for
  std::string propertyType;  ///< what the answer says that it is
  std::uint8_t format = 8;   ///< bits of an item
  std::shared_ptr<const std::string> data;
  PasteboardConversion conversion = PasteboardConversion::none;

  /// Does what is to be done to the data before they are given out, the first time. False when that fails, and from
  /// then on.
  bool makeReady();

  /// How a representation remembers property type and format.
  std::string packing() const;
};

/// What the items give when they are flattened: the first that offers a type gives it. Unless they are restored, texts
/// come under all the names that programs ask for; while they are only borrowed, a hint asks managers not to keep them.
std::vector<X11SelectionForm> makeSelectionForms(std::vector<PasteboardItem> items, PasteboardUse use);

/// Asks clipboard managers not to keep what is beside it.
inline constexpr std::string_view managerHintTarget = "x-kde-passwordManagerHint";

/// Whether a target is no content but a question about the selection, or a deed.
bool isQuestion(std::string_view target);

/// Whether a target is a name of something inside the display, which is gone with its owner.
bool isServerHandle(std::string_view target);

}  // namespace quillo
