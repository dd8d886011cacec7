#pragma once

namespace quillo {

/// Whether the desktop starts the application when the user logs in. Main thread; what is asked is one small file.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  /// False, too, when it cannot be told.
  virtual bool isEnabled() const = 0;

  /// Throws an error that says why, when it cannot be changed.
  virtual void setEnabled(bool isEnabled) = 0;
};

}  // namespace quillo
