#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"

namespace quillo {

/// Why a snapshot has no canonical evidence, or why evidence cannot be trusted.
class CanonicalAccessibilityEvidenceCodecError : public std::exception {
 public:
  struct UnsupportedSchemaVersion {
    std::int64_t version = 0;
    friend bool operator==(const UnsupportedSchemaVersion&, const UnsupportedSchemaVersion&) = default;
  };
  struct UnsupportedSourceSnapshotSchemaVersion {
    std::int64_t version = 0;
    friend bool operator==(const UnsupportedSourceSnapshotSchemaVersion&,
                           const UnsupportedSourceSnapshotSchemaVersion&) = default;
  };
  struct DuplicateNodeID {
    std::int64_t id = 0;
    friend bool operator==(const DuplicateNodeID&, const DuplicateNodeID&) = default;
  };
  struct DuplicateTextBlobID {
    std::int64_t id = 0;
    friend bool operator==(const DuplicateTextBlobID&, const DuplicateTextBlobID&) = default;
  };
  struct DuplicateTextBlobContent {
    std::int64_t existingID = 0;  ///< of the blob that stands earlier
    std::int64_t duplicateID = 0;
    friend bool operator==(const DuplicateTextBlobContent&, const DuplicateTextBlobContent&) = default;
  };
  struct MissingChildrenRelation {
    std::int64_t nodeID = 0;
    friend bool operator==(const MissingChildrenRelation&, const MissingChildrenRelation&) = default;
  };
  struct DuplicateChildrenRelation {
    std::int64_t nodeID = 0;
    friend bool operator==(const DuplicateChildrenRelation&, const DuplicateChildrenRelation&) = default;
  };
  struct UnsupportedRelationKind {
    std::int64_t nodeID = 0;
    CanonicalAccessibilityRelationKind kind = CanonicalAccessibilityRelationKind::children;
    friend bool operator==(const UnsupportedRelationKind&, const UnsupportedRelationKind&) = default;
  };
  struct MissingTextBlob {
    std::int64_t id = 0;
    friend bool operator==(const MissingTextBlob&, const MissingTextBlob&) = default;
  };
  struct InvalidTextBlobMetadata {
    std::int64_t id = 0;
    friend bool operator==(const InvalidTextBlobMetadata&, const InvalidTextBlobMetadata&) = default;
  };
  using Case =
      std::variant<UnsupportedSchemaVersion, UnsupportedSourceSnapshotSchemaVersion, DuplicateNodeID,
                   DuplicateTextBlobID, DuplicateTextBlobContent, MissingChildrenRelation, DuplicateChildrenRelation,
                   UnsupportedRelationKind, MissingTextBlob, InvalidTextBlobMetadata>;

  // Not explicit: an error is thrown by naming its case.
  CanonicalAccessibilityEvidenceCodecError(Case value);  // NOLINT(google-explicit-constructor)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const CanonicalAccessibilityEvidenceCodecError& a,
                         const CanonicalAccessibilityEvidenceCodecError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
