#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <unordered_map>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloLinux/Accessibility/AtspiBulkCache.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiNodeReading.h"
#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// Reads accessible objects into records, many at once: while some wait for answers, other objects' calls fill the
/// gaps.
class AtspiNodeReader {
 public:
  AtspiNodeReader(AtspiBus& bus, AtspiObjectTable& objects, const AccessibilityCaptureControl& control);
  AtspiNodeReader(const AtspiNodeReader&) = delete;
  AtspiNodeReader& operator=(const AtspiNodeReader&) = delete;

  void setToolkit(AtspiToolkit toolkit) { context_.toolkit = toolkit; }
  AtspiToolkit toolkit() const { return context_.toolkit; }

  /// What an application's cache has told need not be asked again: only what it does not hold is read, and the children
  /// where they are not known.
  void useBulk(AtspiBulkRecords records) { bulk_ = std::move(records); }

  /// The record of one object, read now if it was not yet. Never null; a record whose error is set holds nothing.
  const AtspiNodeRecord& record(std::uint64_t token);

  /// The record if it is there already, or null.
  const AtspiNodeRecord* knownRecord(std::uint64_t token) const;

  /// Reads those of the objects that are not known yet.
  void read(std::span<const std::uint64_t> tokens);

  /// Reads the tree below `root`, breadth-first, until `maximumCount` objects are known. What is hidden and what lies
  /// in a password field is not followed.
  void readTree(std::uint64_t root, std::size_t maximumCount);

  /// Whether the application keeps this object, and so all inside it, from being seen.
  bool isHidden(const AtspiNodeRecord& record) const;

  /// Forgets what was read, so that it is read anew.
  void forget() {
    records_.clear();
    bulk_.clear();
    context_.textBudget = AtspiReadingContext::maximumTotalTextLength;
  }

 private:
  bool isWorthFollowing(const AtspiNodeRecord& record) const;
  void start(std::uint64_t token);

  const AccessibilityCaptureControl& control_;
  AtspiReadingContext context_;
  std::unordered_map<std::uint64_t, AtspiNodeRecord> records_;
  AtspiBulkRecords bulk_;                      // what is not read yet
  std::function<void(std::uint64_t)> onRead_;  // while a tree is read: what to do with a new record
};

}  // namespace quillo
