#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/Utf16.h"

/// What evidence must be like, whether it is held as a record or read from a file. The functions throw
/// CanonicalAccessibilityEvidenceCodecError; blobs are any records with the fields of a text blob.
namespace quillo::EvidenceValidation {

using Error = CanonicalAccessibilityEvidenceCodecError;

inline bool isSupportedSnapshotVersion(std::int64_t version) {
  return version >= 1 && version <= AccessibilitySnapshot::currentSchemaVersion;
}

inline void requireVersions(const CanonicalAccessibilityEvidence& evidence) {
  if (evidence.schemaVersion != CanonicalAccessibilityEvidence::currentSchemaVersion)
    throw Error(Error::UnsupportedSchemaVersion{evidence.schemaVersion});
  if (!isSupportedSnapshotVersion(evidence.sourceSnapshotSchemaVersion))
    throw Error(Error::UnsupportedSourceSnapshotSchemaVersion{evidence.sourceSnapshotSchemaVersion});
}

void requireUniqueNodeIDs(const auto& nodes) {
  bool isAscending = true;
  for (std::size_t i = 1; i < nodes.size() && isAscending; ++i) isAscending = nodes[i - 1].id < nodes[i].id;
  if (isAscending) return;
  std::unordered_set<std::int64_t> seen;
  for (const auto& node : nodes) {
    if (!seen.insert(node.id).second) throw Error(Error::DuplicateNodeID{node.id});
  }
}

/// Finds texts by their number. Numbers are dense in what we write, but need not be. The blobs must outlive it.
class TextBlobTable {
 public:
  template <class Blob>
  explicit TextBlobTable(const std::vector<Blob>& blobs) {
    for (std::size_t i = 0; i < blobs.size() && isDense_; ++i) isDense_ = std::cmp_equal(blobs[i].id, i);
    if (isDense_) texts_.reserve(blobs.size());
    for (const auto& blob : blobs) {
      if (isDense_) {
        texts_.push_back(blob.text);
      } else if (!byID_.try_emplace(blob.id, blob.text).second) {
        throw Error(Error::DuplicateTextBlobID{blob.id});
      }
    }
  }

  std::string_view text(std::int64_t id) const {
    if (isDense_) {
      if (std::cmp_less(id, 0) || std::cmp_greater_equal(id, texts_.size())) throw Error(Error::MissingTextBlob{id});
      return texts_[static_cast<std::size_t>(id)];
    }
    const auto found = byID_.find(id);
    if (found == byID_.end()) throw Error(Error::MissingTextBlob{id});
    return found->second;
  }

  void require(std::int64_t id) const { text(id); }

  /// Fetch into the processor's cache what a use soon needs: first where the text is, then the text.
  void prefetchPlace(std::int64_t id) const {
    if (holds(id)) __builtin_prefetch(&texts_[static_cast<std::size_t>(id)]);
  }
  void prefetchText(std::int64_t id) const {
    if (holds(id)) __builtin_prefetch(texts_[static_cast<std::size_t>(id)].data());
  }

 private:
  bool holds(std::int64_t id) const { return isDense_ && id >= 0 && std::cmp_less(id, texts_.size()); }

  bool isDense_ = true;
  std::vector<std::string_view> texts_;
  std::unordered_map<std::int64_t, std::string_view> byID_;
};

template <class Blob>
void requireDistinctTexts(const std::vector<Blob>& blobs) {
  bool isAscending = true;
  for (std::size_t i = 1; i < blobs.size() && isAscending; ++i) isAscending = blobs[i - 1].text < blobs[i].text;
  if (isAscending) return;
  std::unordered_map<std::string_view, std::int64_t> seen;
  for (const auto& blob : blobs) {
    const auto [earlier, isNew] = seen.try_emplace(blob.text, blob.id);
    if (!isNew) throw Error(Error::DuplicateTextBlobContent{earlier->second, blob.id});
  }
}

template <class Blob>
void requireMetadata(const std::vector<Blob>& blobs) {
  Sha256Hasher hasher;
  for (const auto& blob : blobs) {
    const auto digits = hexadecimalDigits(hasher.digest(blob.text));
    const bool matches = std::cmp_equal(blob.utf8ByteCount, blob.text.size()) &&
                         blob.utf16Length == utf16Length(blob.text) &&
                         blob.sha256 == std::string_view(digits.data(), digits.size());
    if (!matches) throw Error(Error::InvalidTextBlobMetadata{blob.id});
  }
}

}  // namespace quillo::EvidenceValidation
