#include "QuilloApp/Model/FailureText.h"

#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo {

void rethrowCancellation(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const OperationCancelled&) {
    throw;
  } catch (const std::exception&) {
    return;
  }
}

std::string failureText(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const OperationCancelled&) {
    throw;
  } catch (const std::exception& failure) {
    return failure.what();
  }
}

}  // namespace quillo
