// Several processes, and processes that are killed, over one library.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "ArtifactStoreFixture.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

/// What a process tells before it goes on: it has created, or edited, this artifact.
struct Report {
  char what = 0;  // 'c' or 'e'
  UUID id;
};

void tell(int pipe, char what, const UUID& id) {
  std::array<std::uint8_t, 1 + sizeof(id.bytes)> message{static_cast<std::uint8_t>(what)};
  std::memcpy(message.data() + 1, id.bytes.data(), sizeof(id.bytes));
  if (::write(pipe, message.data(), message.size()) < 0) std::_Exit(1);
}

std::vector<Report> reportsIn(int pipe) {
  std::vector<Report> reports;
  std::array<std::uint8_t, 1 + sizeof(UUID::bytes)> message{};
  while (::read(pipe, message.data(), message.size()) == static_cast<ssize_t>(message.size())) {
    Report& report = reports.emplace_back();
    report.what = static_cast<char>(message[0]);
    std::memcpy(report.id.bytes.data(), message.data() + 1, sizeof(report.id.bytes));
  }
  return reports;
}

/// Creates and edits until it is killed.
[[noreturn]] void createAndEditForever(const fs::path& root, int pipe) {
  PosixFileSystem fileSystem;
  SystemWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore store(root, {fileSystem, trash, clock, identifiers}, fakeProjection());
  for (;;) {
    const StoredArtifact stored = store.create(makeDraft(identifiers.makeUUID().text()));
    tell(pipe, 'c', stored.manifest.id);
    ArtifactManifest manifest = stored.manifest;
    manifest.title = "Edited";
    store.update(stored, manifest);
    tell(pipe, 'e', stored.manifest.id);
  }
}

/// How often a process is killed: some hundred times, or as often as a soak test wants.
int killCount() {
  constexpr int usual = 200;
  const char* wanted = std::getenv("QUILLO_SOAK_ROUNDS");
  return wanted == nullptr ? usual : std::atoi(wanted);
}

TEST_F(ArtifactStoreTest, aKilledProcessLeavesOnlyWholeBundlesAndLosesNoEdit) {
  const ContextArtifactDraft draft = makeDraft();
  std::map<std::string, char> told;
  std::size_t wholeCount = 0;
  const int kills = killCount();
  for (int i = 1; i <= kills; ++i) {
    std::array<int, 2> ends{};
    ASSERT_EQ(0, ::pipe(ends.data()));
    const pid_t child = ::fork();
    if (child == 0) createAndEditForever(root(), ends[1]);
    ::close(ends[1]);
    ::usleep(static_cast<useconds_t>(500 + 137 * i % 9'000));
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(child, ::waitpid(child, &status, 0));
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "the process failed by itself";
    for (const Report& report : reportsIn(ends[0])) told[report.id.text()] = report.what;
    ::close(ends[0]);
    if (i % 100 != 0 && i != kills) continue;

    store.prepare();
    const auto artifacts = store.list();
    EXPECT_EQ(store.bundleNames().size(), artifacts.size());
    for (const auto& stored : artifacts) {
      EXPECT_EQ(draft.accessibilitySnapshot, store.load(stored.manifest.id).accessibilitySnapshot);
      EXPECT_TRUE(stored.manifest.title == "Inbox" || stored.manifest.title == "Edited");
      const auto expected = told.find(stored.manifest.id.text());
      // The last artifact of a process may be further than it could tell.
      if (expected == told.end()) continue;
      if (expected->second == 'e') EXPECT_EQ("Edited", stored.manifest.title);
      told.erase(expected);
    }
    EXPECT_EQ(0U, told.size()) << "artifacts that were created are missing";
    wholeCount += artifacts.size();
    told.clear();
    fs::remove_all(root());
  }
  EXPECT_GT(wholeCount, 0U);
}

/// Creates bundles, and moves every second one away; leaves the program with 0 when nothing failed.
[[noreturn]] void createAndTrash(const fs::path& root, const fs::path& trashFolder) {
  constexpr int count = 60;
  int failures = 0;
  try {
    PosixFileSystem fileSystem;
    SystemWallClock clock;
    RandomUUIDGenerator identifiers;
    FakeTrash trash;
    trash.action = [&](const fs::path& path) {
      fs::rename(path, trashFolder / path.filename());
      return std::optional(trashFolder / path.filename());
    };
    ArtifactStore store(root, {fileSystem, trash, clock, identifiers}, fakeProjection());
    for (int i = 0; i < count; ++i) {
      const UUID id = identifiers.makeUUID();
      store.create(makeDraft(id.text()));
      if (i % 2 == 0) store.moveToTrash(id);
    }
  } catch (const std::exception&) {
    ++failures;
  }
  std::_Exit(failures);
}

TEST_F(ArtifactStoreTest, severalProcessesShareALibrary) {
  const fs::path trashFolder = directory.path() / "Trash";
  fs::create_directory(trashFolder);
  std::vector<pid_t> children;
  children.reserve(2);
  for (int i = 0; i < 2; ++i) {
    const pid_t child = ::fork();
    if (child == 0) createAndTrash(root(), trashFolder);
    children.push_back(child);
  }
  store.prepare();
  // Bundles come and go while they are read.
  std::size_t running = children.size();
  while (running > 0) {
    const auto artifacts = store.list();
    EXPECT_LE(artifacts.size(), 62U);
    int status = 0;
    if (const pid_t ended = ::waitpid(-1, &status, WNOHANG); ended > 0) {
      EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
      --running;
    }
  }
  EXPECT_EQ(60U, store.list().size());
  EXPECT_EQ(60U, store.bundleNames().size());
  EXPECT_EQ(60, std::distance(fs::directory_iterator(trashFolder), fs::directory_iterator()));
}

}  // namespace
}  // namespace quillo::test
