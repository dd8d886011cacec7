#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"

#include <fmt/format.h>

#include <utility>

namespace quillo {
namespace {

using Error = CanonicalAccessibilityEvidenceCodecError;

struct Describe {
  std::string operator()(const Error::UnsupportedSchemaVersion& e) const {
    return fmt::format("Accessibility evidence schema version {} is not supported.", e.version);
  }
  std::string operator()(const Error::UnsupportedSourceSnapshotSchemaVersion& e) const {
    return fmt::format("Accessibility snapshot schema version {} is not supported.", e.version);
  }
  std::string operator()(const Error::DuplicateNodeID& e) const {
    return fmt::format("The Accessibility evidence holds node {} twice.", e.id);
  }
  std::string operator()(const Error::DuplicateTextBlobID& e) const {
    return fmt::format("The Accessibility evidence holds text {} twice.", e.id);
  }
  std::string operator()(const Error::DuplicateTextBlobContent& e) const {
    return fmt::format("Texts {} and {} of the Accessibility evidence are the same.", e.existingID, e.duplicateID);
  }
  std::string operator()(const Error::MissingChildrenRelation& e) const {
    return fmt::format("Node {} of the Accessibility evidence does not say which children it has.", e.nodeID);
  }
  std::string operator()(const Error::DuplicateChildrenRelation& e) const {
    return fmt::format("Node {} of the Accessibility evidence says twice which children it has.", e.nodeID);
  }
  std::string operator()(const Error::UnsupportedRelationKind& e) const {
    return fmt::format("The relation \"{}\" of node {} of the Accessibility evidence is not supported.", nameOf(e.kind),
                       e.nodeID);
  }
  std::string operator()(const Error::MissingTextBlob& e) const {
    return fmt::format("The Accessibility evidence refers to text {}, which it does not hold.", e.id);
  }
  std::string operator()(const Error::InvalidTextBlobMetadata& e) const {
    return fmt::format("Text {} of the Accessibility evidence does not match its digest or its lengths.", e.id);
  }
};

}  // namespace

CanonicalAccessibilityEvidenceCodecError::CanonicalAccessibilityEvidenceCodecError(Case value)
    : value_(value), description_(std::visit(Describe{}, value_)) {}

}  // namespace quillo
