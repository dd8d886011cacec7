#pragma once

#include <exception>

namespace quillo {

/// The caller no longer wants the result. Never reported to the user as an error.
class OperationCancelled : public std::exception {
 public:
  const char* what() const noexcept override { return "The operation was cancelled."; }
};

}  // namespace quillo
