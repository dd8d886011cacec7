#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "ArtifactFixtures.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {

/// A store in a directory of its own on the real file system.
class ArtifactStoreTest : public ::testing::Test {
 protected:
  std::filesystem::path root() const { return directory.path() / "share" / "Artifacts"; }
  std::filesystem::path firstBundle() const { return root() / (std::string(firstID) + ".quillo"); }

  /// Writes the manifest of the first bundle anew, as another program could.
  void rewriteManifest(const std::function<void(ArtifactManifest&)>& change) {
    ArtifactManifest manifest = makeManifest();
    change(manifest);
    writeFile(firstBundle() / "manifest.json", encodeJson(manifest, JsonStyle::prettyPrinted));
  }

  std::vector<std::string> listed() {
    std::vector<std::string> ids;
    for (const auto& stored : store.list()) ids.push_back(stored.manifest.id.text());
    return ids;
  }

  std::string errorOfLoading() {
    try {
      store.load(*UUID::parse(firstID));
    } catch (const std::exception& error) {
      return error.what();
    }
    return "no error";
  }

  std::vector<std::string> namesInRoot() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(root())) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }

  TemporaryDirectory directory;
  PosixFileSystem fileSystem;
  FixedWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore store{root(), {fileSystem, trash, clock, identifiers}, fakeProjection()};
};

}  // namespace quillo::test
