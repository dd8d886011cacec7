#pragma once

#include <optional>

#include "QuilloCore/Capture/RunningApplicationsProviding.h"

namespace quillo::test {

/// One application, or none, is frontmost.
class FakeRunningApplications final : public RunningApplicationsProviding {
 public:
  std::optional<RunningApplication> frontmostApplication() override { return frontmost; }
  std::optional<RunningApplication> application(std::int32_t processIdentifier) override {
    return frontmost && frontmost->processIdentifier == processIdentifier ? frontmost : std::nullopt;
  }

  std::optional<RunningApplication> frontmost;
};

}  // namespace quillo::test
