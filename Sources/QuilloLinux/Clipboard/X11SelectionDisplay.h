#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// A property's content with its type and item size.
struct X11Property {
  std::uint32_t type = 0;  ///< 0 when there is no such property
  std::uint8_t format = 0;
  std::string data;
  bool isCut = false;  ///< there was more than was asked for; then it was not deleted either

  /// The 32-bit items.
  std::vector<std::uint32_t> words() const;
};

enum class X11PropertyReading : std::uint8_t { keep, remove };

/// A connection to the display for the exchange of selections, with a window that owns them and the names of atoms.
/// Used by one thread. Requests wait for the display alone, never for another program.
class X11SelectionDisplay {
 public:
  /// Throws PasteboardError.
  X11SelectionDisplay();
  X11SelectionDisplay(const X11SelectionDisplay&) = delete;
  X11SelectionDisplay& operator=(const X11SelectionDisplay&) = delete;
  ~X11SelectionDisplay();

  xcb_connection_t* get() const { return connection_->get(); }
  const X11Connection& connection() const { return *connection_; }
  std::uint32_t window() const { return window_; }
  bool isLost() const { return connection_->isBroken(); }

  // The atoms of the protocol.
  std::uint32_t clipboard() const { return atoms_[0]; }
  std::uint32_t clipboardManager() const { return atoms_[1]; }
  std::uint32_t targets() const { return atoms_[2]; }
  std::uint32_t timestamp() const { return atoms_[3]; }
  std::uint32_t multiple() const { return atoms_[4]; }
  std::uint32_t incremental() const { return atoms_[5]; }
  std::uint32_t atomPair() const { return atoms_[6]; }
  std::uint32_t saveTargets() const { return atoms_[7]; }
  /// Properties of our own windows: what is read arrives under one, the other's changes tell the display's time.
  std::uint32_t arrival() const { return atoms_[8]; }
  std::uint32_t clock() const { return atoms_[9]; }

  /// The first number of the events that tell of selections' owners.
  std::uint8_t selectionNotify() const { return firstExtensionEvent_; }

  std::vector<std::uint32_t> atomsOf(std::span<const std::string> names);
  /// Empty for a number that is no atom.
  std::vector<std::string> namesOf(std::span<const std::uint32_t> atoms);

  /// A new window without anything on the screen that tells of changes of its properties.
  std::uint32_t makeWindow() const;
  void destroyWindow(std::uint32_t window) const;

  /// At most that many bytes of a property, which is removed when it was read whole and that is asked for.
  X11Property property(std::uint32_t window, std::uint32_t property, std::size_t maximumBytes,
                       X11PropertyReading reading) const;

  /// Number of bytes that go well into one request: at most a quarter of the largest.
  std::size_t chunkSize() const { return chunkSize_; }

  /// Sets a property; the data is cut to whole items.
  void setProperty(std::uint32_t window, std::uint32_t property, std::uint32_t type, std::uint8_t format,
                   std::string_view data) const;
  void setAtoms(std::uint32_t window, std::uint32_t property, std::span<const std::uint32_t> atoms) const;

  /// 0 when nobody owns the selection.
  std::uint32_t ownerOf(std::uint32_t selection) const;

 private:
  std::unique_ptr<X11Connection> connection_;
  std::vector<std::uint32_t> atoms_;
  std::unordered_map<std::string, std::uint32_t> atomsByName_;
  std::unordered_map<std::uint32_t, std::string> namesByAtom_;
  std::uint32_t window_ = 0;
  std::size_t chunkSize_ = 0;
  std::uint8_t firstExtensionEvent_ = 0;
};

}  // namespace quillo
