#pragma once

#include <exception>
#include <string>

namespace quillo {

/// Throws the error again if it is a cancellation: a cancelled flow ends, and tells nobody.
void rethrowCancellation(const std::exception_ptr& error);

/// What the user is told of the error. As `rethrowCancellation`.
std::string failureText(const std::exception_ptr& error);

}  // namespace quillo
