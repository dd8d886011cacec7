#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

struct xcb_connection_t;

namespace quillo::test {

/// What an owner does when it is asked for a type.
struct OwnerAnswer {
  enum class Manner : std::uint8_t {
    atOnce,
    inPieces,
    refusing,
    never,
    withoutData,      ///< says that it has answered, and has not
    tornOff,          ///< ends after the first piece, in due form
    stoppingHalfway,  ///< says nothing more after the first piece
    leavingHalfway,   ///< its connection ends after the first piece
    endlessly,        ///< always another piece
  };

  std::string data;
  Manner manner = Manner::atOnce;
  std::string type{};  ///< of the property; the target's name by default
  std::uint8_t format = 8;
};

/// A connection to the display that talks the selection protocol by hand.
class SelectionConnection {
 public:
  SelectionConnection();
  SelectionConnection(const SelectionConnection&) = delete;
  SelectionConnection& operator=(const SelectionConnection&) = delete;
  ~SelectionConnection();

  xcb_connection_t* get() const { return connection_; }
  std::uint32_t window() const { return window_; }
  std::uint32_t atom(const std::string& name) const;

  void own(const std::string& selection = "CLIPBOARD") const;
  std::uint32_t owner(const std::string& selection = "CLIPBOARD") const;

 private:
  xcb_connection_t* connection_;
  std::uint32_t window_;
};

/// Another program that owns the clipboard, on a connection and thread of its own, and does what the test says. It
/// gives up the clipboard with its end.
class ClipboardPeer {
 public:
  using Answers = std::vector<std::pair<std::string, OwnerAnswer>>;

  /// TARGETS lists the types, unless there is an answer of its own for it.
  explicit ClipboardPeer(Answers answers);
  ClipboardPeer(const ClipboardPeer&) = delete;
  ClipboardPeer& operator=(const ClipboardPeer&) = delete;
  ~ClipboardPeer();

 private:
  struct Transfer {
    std::uint32_t window = 0;
    std::uint32_t type = 0;
    const OwnerAnswer* answer = nullptr;
    std::size_t position = 0;
  };

  void run();
  bool handleEvents();
  std::uint32_t answer(std::uint32_t window, std::uint32_t target, std::uint32_t property);
  void givePiece(std::uint32_t property);

  Answers answers_;
  std::unique_ptr<SelectionConnection> connection_;
  std::map<std::uint32_t, Transfer> transfers_;  // by property
  int endEvent_;
  std::thread thread_;
};

/// What somebody who asks for a type receives.
struct ReceivedProperty {
  std::string type;
  std::uint8_t format = 0;
  std::string data;
  bool isIncremental = false;
};

/// Asks the owner of a selection for types, one after the other. Nothing means refused; waits 10 seconds and then
/// throws std::runtime_error.
class ClipboardRequestor {
 public:
  std::optional<ReceivedProperty> ask(const std::string& target, std::uint32_t time = 0);
  /// By MULTIPLE, all at once.
  std::vector<std::optional<ReceivedProperty>> askSeveral(const std::vector<std::string>& targets);
  std::vector<std::string> targets();
  /// Begins an incremental transfer and never takes a piece.
  void beginAndStall(const std::string& target);

  SelectionConnection& connection() { return connection_; }

 private:
  std::optional<ReceivedProperty> receive(std::uint32_t property);

  SelectionConnection connection_;
};

/// A clipboard manager that takes over all that it is asked to save, once.
class SavingManager {
 public:
  SavingManager();
  SavingManager(const SavingManager&) = delete;
  SavingManager& operator=(const SavingManager&) = delete;
  ~SavingManager();

 private:
  void save();

  SelectionConnection connection_;
  std::unique_ptr<ClipboardPeer> saved_;
  std::thread thread_;
};

}  // namespace quillo::test
