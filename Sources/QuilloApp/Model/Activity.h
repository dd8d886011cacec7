#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace quillo {

/// What the application is doing or has just done.
struct Activity {
  enum class Kind : std::uint8_t { idle, loading, capturing, saving, pasting, success, failure };

  Kind kind = Kind::idle;
  std::string message;  ///< of a success or failure

  static Activity success(std::string message) { return {Kind::success, std::move(message)}; }
  static Activity failure(std::string message) { return {Kind::failure, std::move(message)}; }

  bool isMessage() const { return kind == Kind::success || kind == Kind::failure; }
  bool isWorking() const { return kind != Kind::idle && !isMessage(); }

  friend bool operator==(const Activity&, const Activity&) = default;
};

}  // namespace quillo
