#pragma once

#include <cstdint>
#include <memory>

#include "QuilloCore/Paste/PasteDeliveryExclusion.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// A selection of the display that only one process owns at a time, and loses when it ends. Where there is no display
/// there is no other delivery.
class X11PasteExclusion final : public PasteDeliveryExclusion {
 public:
  bool enter() override;
  void leave() override;

 private:
  std::unique_ptr<X11Connection> connection_;
};

}  // namespace quillo
