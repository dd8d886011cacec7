#pragma once

namespace quillo {

/// The modifier keys that fingers hold down; locks (Caps Lock, Num Lock) do not count.
struct PhysicalModifierFlags {
  bool shift = false;
  bool control = false;
  bool option = false;             ///< Alt
  bool command = false;            ///< Super
  bool secondaryFunction = false;  ///< the key for a third level of characters

  bool isAnyHeld() const { return shift || control || option || command || secondaryFunction; }

  friend bool operator==(const PhysicalModifierFlags&, const PhysicalModifierFlags&) = default;
};

/// Reads the keyboard. Quick; may be called on any one thread. Where there is no keyboard nothing is held.
class PhysicalModifierFlagsProviding {
 public:
  virtual ~PhysicalModifierFlagsProviding() = default;
  virtual PhysicalModifierFlags physicalModifierFlags() = 0;
};

}  // namespace quillo
