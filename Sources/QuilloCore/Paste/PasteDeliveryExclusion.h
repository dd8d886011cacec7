#pragma once

namespace quillo {

/// Keeps deliveries of different processes apart: one that borrowed the clipboard during another would take the other's
/// screenshot for the user's own content, and give that back. Used by one thread.
class PasteDeliveryExclusion {
 public:
  virtual ~PasteDeliveryExclusion() = default;

  /// False when another process delivers. A process that ends leaves by that.
  virtual bool enter() = 0;
  virtual void leave() = 0;
};

}  // namespace quillo
