#pragma once

#include <memory>

#include "QuilloCore/Paste/PasteKeystrokeSending.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// Presses the paste keys through the display's test extension. The keys are looked up by what they write in the active
/// layout, each time anew: where no layout writes a Latin v, Shift+Insert stands in for Control+V.
///
/// Focus and modifiers are looked at, and the keys pressed and released, while the display serves nobody else, so
/// nothing can come between. All presses and releases leave in one piece.
class X11PasteKeystroke final : public PasteKeystrokeSending {
 public:
  bool isAllowed() override;
  PasteKeystrokeOutcome send(PasteKeystroke keystroke, std::uint32_t inputFocus) override;

 private:
  bool connect();

  std::unique_ptr<X11Connection> connection_;
};

}  // namespace quillo
