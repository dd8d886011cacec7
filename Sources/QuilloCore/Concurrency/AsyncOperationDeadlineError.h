#pragma once

#include <exception>
#include <string>
#include <variant>

namespace quillo {

/// An operation was not done by its deadline.
class AsyncOperationDeadlineError : public std::exception {
 public:
  struct Exceeded {
    double seconds = 0;  ///< the deadline, counted from the operation's start
    friend bool operator==(const Exceeded&, const Exceeded&) = default;
  };
  using Case = std::variant<Exceeded>;

  // Not explicit: an error is thrown by naming its case.
  AsyncOperationDeadlineError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const AsyncOperationDeadlineError& a, const AsyncOperationDeadlineError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
