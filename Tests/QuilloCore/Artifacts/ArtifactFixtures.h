#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Artifacts/ArtifactProjection.h"
#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "Tests/Support/FixedWallClock.h"

namespace quillo::test {

inline constexpr const char* firstID = "0A000000-0000-4000-8000-000000000001";
inline constexpr const char* secondID = "FB000000-0000-4000-8000-000000000002";

/// A complete manifest of layout 3.
ArtifactManifest makeManifest(const std::string& id = firstID);

/// A draft of a small window, its context text being what `fakeProjection` renders.
ContextArtifactDraft makeDraft(const std::string& id = firstID);

/// Names the process identifier that it saw, so that a test sees which capture was rendered, and where an observation
/// came from: "seen 42" when it was stored, "rebuilt 42" when it was made from the snapshot.
ArtifactProjection fakeProjection();

class CountingUUIDGenerator final : public UUIDGenerating {
 public:
  UUID makeUUID() override {
    ++count_;
    UUID id;
    id.bytes[14] = static_cast<std::uint8_t>(count_ >> 8U);
    id.bytes[15] = static_cast<std::uint8_t>(count_);
    return id;
  }

 private:
  std::uint16_t count_ = 0;
};

/// Does what it is told.
class FakeTrash final : public TrashOperation {
 public:
  std::function<std::optional<std::filesystem::path>(const std::filesystem::path&)> action;

  std::optional<std::filesystem::path> moveToTrash(const std::filesystem::path& path) override { return action(path); }
  void restore(const std::filesystem::path& trashed, const std::filesystem::path& original) override {
    std::filesystem::rename(trashed, original);
  }
};

}  // namespace quillo::test
