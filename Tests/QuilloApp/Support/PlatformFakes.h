#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "QuilloApp/Model/CaptureHeadsUpPanel.h"
#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloCore/Paste/PasteDestination.h"
#include "QuilloCore/Paste/PhysicalModifierFlagsProviding.h"

namespace quillo::test {

/// Notes what it shows, as "progress Letter", "success Letter: 1 element, complete", "failure …", "hide".
class FakeHeadsUpPanel final : public CaptureHeadsUpPanel {
 public:
  void showProgress(const CaptureNotice& notice) override { log.push_back("progress " + notice.title); }
  void showSuccess(const CaptureNotice& notice) override {
    log.push_back("success " + notice.title + ": " + notice.detail);
  }
  void showFailure(const CaptureFailureNotice& notice) override {
    log.push_back("failure " + notice.message + (notice.remedy ? " (" + *notice.remedy + ")" : ""));
  }
  void hide() override { log.emplace_back("hide"); }

  std::vector<std::string> log;
};

class FakePasteDestination final : public PasteDestination {
 public:
  Task<bool> isPermitted(AccessibilityTrustPrompt /*prompt*/) override { co_return isAllowed; }
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override { co_return frontmost; }
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt /*prompt*/) override {
    frozen.push_back(processIdentifier);
    co_return resolution;
  }
  Task<bool> isCurrent(FrozenPasteTarget /*target*/) override { co_return hasFocus; }
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget /*target*/) override {
    if (onPaste) onPaste();
    co_return keystroke;
  }

  bool isAllowed = true;
  bool hasFocus = true;
  std::optional<std::int32_t> frontmost = 500;
  std::expected<FrozenPasteTarget, PasteTargetFreezeError> resolution = FrozenPasteTarget{};
  PasteKeystrokeResult keystroke = PasteKeystrokeResult::sent;
  std::function<void()> onPaste;
  std::vector<std::int32_t> frozen;  ///< the processes in which a destination was frozen
};

class FakeModifiers final : public PhysicalModifierFlagsProviding {
 public:
  PhysicalModifierFlags physicalModifierFlags() override { return held; }
  PhysicalModifierFlags held;
};

class FakeFileManager final : public ArtifactRevealing {
 public:
  void reveal(const std::filesystem::path& bundlePath) override { revealed.push_back(bundlePath.filename().string()); }
  std::vector<std::string> revealed;
};

}  // namespace quillo::test
