#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "QuilloApp/Model/QuilloModelState.h"
#include "QuilloCore/Support/Date.h"

namespace quillo {

enum class GuideStep : std::uint8_t { access, shortcuts, capture, paste };

/// How far a new user has come in the guide, told from what has really happened.
class GuideProgress {
 public:
  static constexpr std::array steps{GuideStep::access, GuideStep::shortcuts, GuideStep::capture, GuideStep::paste};

  explicit GuideProgress(Date beganAt) : beganAt_(beganAt) {}

  void follow(const QuilloModelState& state);
  /// The practice field has received a capture of so many characters.
  void notePaste(std::size_t characterCount) { pastedCharacterCount_ = characterCount; }

  /// Access and shortcuts can be lost again; what has been captured and pasted stays done.
  bool isDone(GuideStep step) const {
    return isDone_.at(static_cast<std::size_t>(step)) || (step == GuideStep::paste && pastedCharacterCount_);
  }
  bool isEverythingDone() const;

  const std::string& capturedTitle() const { return capturedTitle_; }
  std::optional<std::size_t> pastedCharacterCount() const { return pastedCharacterCount_; }

 private:
  Date beganAt_;
  std::array<bool, steps.size()> isDone_{};
  std::string capturedTitle_;
  std::optional<std::size_t> pastedCharacterCount_;
};

}  // namespace quillo
