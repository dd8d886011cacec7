// Evidence beside a SHA-256 pass over the same bytes; listing beside reading the same files; creating and loading one
// bundle. With the arguments "library DIR COUNT BYTES" it makes a library for run-storage instead.

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloCore/Support/Sha256.h"
#include "RatioTable.h"
#include "SyntheticSnapshots.h"

namespace quillo::bench {
namespace {

namespace fs = std::filesystem;
namespace codec = CanonicalAccessibilityEvidenceCodec;

class NoTrash final : public TrashOperation {
 public:
  std::optional<fs::path> moveToTrash(const fs::path& /*path*/) override { throw TrashError("not here"); }
  void restore(const fs::path& /*trashed*/, const fs::path& /*original*/) override { throw TrashError("not here"); }
};

/// With the real normalizer and renderer.
struct Library {
  explicit Library(fs::path root)
      : store(std::move(root), {fileSystem, trash, clock, identifiers}, ArtifactProjection::standard()) {}

  PosixFileSystem fileSystem;
  NoTrash trash;
  SystemWallClock clock;
  RandomUUIDGenerator identifiers;
  ArtifactStore store;
};

/// In memory, so that syncing costs nothing.
struct MemoryFolder {
  MemoryFolder() {
    std::string pattern = "/dev/shm/quillo-bench-XXXXXX";
    path = ::mkdtemp(pattern.data());
  }
  MemoryFolder(const MemoryFolder&) = delete;
  MemoryFolder& operator=(const MemoryFolder&) = delete;
  ~MemoryFolder() { fs::remove_all(path); }
  fs::path path;
};

ContextArtifactDraft makeDraft(Library& library, std::size_t contextBytes) {
  ContextArtifactDraft draft;
  draft.manifest.id = library.identifiers.makeUUID();
  draft.manifest.title = "A window";
  draft.manifest.createdAt = draft.manifest.modifiedAt = library.clock.now();
  while (draft.manifest.contextText.size() < contextBytes)
    draft.manifest.contextText += fmt::format("- button \"Button {}\" — press\n", draft.manifest.contextText.size());
  draft.screenshotPNG = std::string(1'000, 'x');
  return draft;
}

/// A page of some ten megabytes of evidence.
const AccessibilitySnapshot& largePage() {
  static const AccessibilitySnapshot page = makePage(40'000);
  return page;
}

void sha256OfTheEvidence(benchmark::State& state) {
  const std::string bytes = codec::encodeSnapshot(largePage());
  Sha256Hasher hasher;
  for (auto _ : state) benchmark::DoNotOptimize(hasher.digest(bytes));
  state.SetLabel(fmt::format("{} bytes", bytes.size()));
}

void encodeEvidence(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(codec::encodeSnapshot(largePage()));
}

void decodeEvidence(benchmark::State& state) {
  const std::string bytes = codec::encodeSnapshot(largePage());
  for (auto _ : state) benchmark::DoNotOptimize(codec::decodeSnapshot(JsonDocument::parseInPlace(bytes).root()));
}

/// A capture of 10,000 nodes, with its observation and its text.
ContextArtifactDraft makeLargeDraft(Library& library) {
  ContextArtifactDraft draft = makeDraft(library, 0);
  const ArtifactProjection projection = ArtifactProjection::standard();
  draft.accessibilitySnapshot = makePage(10'000);
  draft.interfaceObservation = projection.makeObservation(draft.accessibilitySnapshot);
  draft.manifest.contextText = projection.renderContextText(draft.interfaceObservation);
  return draft;
}

void createBundle(benchmark::State& state) {
  const MemoryFolder folder;
  Library library(folder.path);
  ContextArtifactDraft draft = makeLargeDraft(library);
  for (auto _ : state) {
    draft.manifest.id = library.identifiers.makeUUID();
    library.store.create(draft);
  }
}

void loadBundle(benchmark::State& state) {
  const MemoryFolder folder;
  Library library(folder.path);
  const ContextArtifactDraft draft = makeLargeDraft(library);
  library.store.create(draft);
  for (auto _ : state) benchmark::DoNotOptimize(library.store.load(draft.manifest.id));
}

/// The observation is missing, so that it is made anew.
void loadBundleOfOldLayout(benchmark::State& state) {
  const MemoryFolder folder;
  Library library(folder.path);
  const ContextArtifactDraft draft = makeLargeDraft(library);
  fs::remove(*library.store.create(draft).observationPath());
  for (auto _ : state) benchmark::DoNotOptimize(library.store.load(draft.manifest.id));
}

BENCHMARK(sha256OfTheEvidence)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(encodeEvidence)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(decodeEvidence)->Unit(benchmark::kMillisecond)->Repetitions(5);
BENCHMARK(createBundle)->Iterations(20)->Unit(benchmark::kMillisecond)->Repetitions(3);
BENCHMARK(loadBundleOfOldLayout)->Iterations(20)->Unit(benchmark::kMillisecond)->Repetitions(3);
BENCHMARK(loadBundle)->Iterations(20)->Unit(benchmark::kMillisecond)->Repetitions(3);

void makeLibrary(const fs::path& root, int count, std::size_t contextBytes) {
  Library library(root);
  for (int i = 0; i < count; ++i) library.store.create(makeDraft(library, contextBytes));
}

}  // namespace
}  // namespace quillo::bench

int main(int argc, char** argv) {
  using namespace quillo::bench;
  if (argc == 5 && std::string_view(argv[1]) == "library") {
    makeLibrary(argv[2], std::stoi(argv[3]), std::stoul(argv[4]));
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  RatioTable table({
      {"encodeEvidence", "sha256OfTheEvidence", "at most 5"},
      {"decodeEvidence", "sha256OfTheEvidence", "at most 5"},
      {"createBundle", "sha256OfTheEvidence", "under 100 ms"},
      {"loadBundle", "sha256OfTheEvidence", "under 150 ms"},
      {"loadBundleOfOldLayout", "sha256OfTheEvidence", "under 150 ms"},
  });
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
