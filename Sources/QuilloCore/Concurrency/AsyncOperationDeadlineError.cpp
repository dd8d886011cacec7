#include "QuilloCore/Concurrency/AsyncOperationDeadlineError.h"

#include "QuilloCore/Support/NumberFormatting.h"

namespace quillo {

AsyncOperationDeadlineError::AsyncOperationDeadlineError(Case value)
    : value_(value),
      description_("The operation exceeded its " + formatSeconds(std::get<Exceeded>(value).seconds) +
                   "-second safety deadline.") {}

}  // namespace quillo
