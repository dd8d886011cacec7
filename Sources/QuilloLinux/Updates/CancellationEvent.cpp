#include "QuilloLinux/Updates/CancellationEvent.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace quillo {

CancellationEvent::CancellationEvent() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (descriptor_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

CancellationEvent::~CancellationEvent() {
  ::close(descriptor_);
}

void CancellationEvent::cancel() const {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto bytesWritten = ::write(descriptor_, &one, sizeof one);
}

bool CancellationEvent::isCancelled() const {
  pollfd event{descriptor_, POLLIN, 0};
  return ::poll(&event, 1, 0) > 0;
}

}  // namespace quillo
