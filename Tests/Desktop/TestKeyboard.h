#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"

struct xcb_connection_t;

namespace quillo::test {

/// Keys of the display's keyboard, by the display's codes (X11KeyCodes.h has those of letters).
namespace Keys {
inline constexpr std::uint8_t control = 37;
inline constexpr std::uint8_t shift = 50;
inline constexpr std::uint8_t alt = 64;
inline constexpr std::uint8_t capsLock = 66;
inline constexpr std::uint8_t numLock = 77;
inline constexpr std::uint8_t super = 133;
}  // namespace Keys

/// Presses keys as a person would. What is still held is let go at the end, and the locks are switched off.
class TestKeyboard {
 public:
  TestKeyboard();
  TestKeyboard(const TestKeyboard&) = delete;
  TestKeyboard& operator=(const TestKeyboard&) = delete;
  ~TestKeyboard();

  void press(std::uint8_t keyCode);
  void release(std::uint8_t keyCode);
  /// Presses and releases it.
  void tap(std::uint8_t keyCode);

  /// The modifiers and the key go down in order, and up in the reverse one.
  void type(const QuilloHotKey& hotKey);
  void pressModifiers(QuilloHotKeyModifiers modifiers);
  void releaseModifiers(QuilloHotKeyModifiers modifiers);

  /// Num Lock then stands for the modifier of this number (from 0, Shift) alone.
  bool makeNumLock(unsigned modifier);

  /// Repeats held keys at once and fast; in milliseconds.
  void setRepeat(std::uint16_t delay, std::uint16_t interval);

 private:
  void send(std::uint8_t type, std::uint8_t keyCode);

  xcb_connection_t* connection_;
  std::uint32_t root_;
  std::vector<std::uint8_t> held_;
};

/// Another program, which has grabbed a combination, perhaps with a lock's modifier. Counts the key events that it
/// gets.
class OtherProgramsHotKey {
 public:
  explicit OtherProgramsHotKey(const QuilloHotKey& hotKey, unsigned lock = 0);
  OtherProgramsHotKey(const OtherProgramsHotKey&) = delete;
  OtherProgramsHotKey& operator=(const OtherProgramsHotKey&) = delete;
  ~OtherProgramsHotKey();

  bool isGrabbed() const { return isGrabbed_; }
  /// Presses and releases so far.
  int eventCount();

 private:
  xcb_connection_t* connection_;
  bool isGrabbed_ = false;
  int eventCount_ = 0;
};

}  // namespace quillo::test
