#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <unordered_map>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloLinux/Accessibility/AtspiBulkCache.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// Reads accessible objects into records, many at once: the base calls of an object are in flight together, what its
/// role makes worth asking follows as soon as the role is known, and other objects' calls fill the gaps.
///
/// Of a password field no text is ever asked.
class AtspiNodeReader {
 public:
  /// Of a text longer than this, only so many characters are fetched; no capture keeps more.
  static constexpr std::int32_t maximumTextLength = 600'000;
  /// Of all texts together; past it a text is only begun, and its announced length tells that the rest is missing.
  static constexpr std::int64_t maximumTotalTextLength = 4'000'000;

  AtspiNodeReader(AtspiBus& bus, AtspiObjectTable& objects, const AccessibilityCaptureControl& control)
      : bus_(bus), objects_(objects), control_(control) {}

  void setToolkit(AtspiToolkit toolkit) { toolkit_ = toolkit; }
  AtspiToolkit toolkit() const { return toolkit_; }

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
    textBudget_ = maximumTotalTextLength;
  }

 private:
  struct Reading;

  bool isWorthFollowing(const AtspiNodeRecord& record) const;
  void start(std::uint64_t token);
  bool startFromBulk(const std::shared_ptr<Reading>& reading);
  void readAttributes(const std::shared_ptr<Reading>& reading);
  void readRole(const std::shared_ptr<Reading>& reading);
  void readLeafOrBase(const std::shared_ptr<Reading>& reading);
  void finishNamedLeaf(const std::shared_ptr<Reading>& reading);
  void readBase(const std::shared_ptr<Reading>& reading);
  void readState(const std::shared_ptr<Reading>& reading);
  void readChildren(const std::shared_ptr<Reading>& reading);
  void readCountedChildren(const std::shared_ptr<Reading>& reading);
  void readExtents(const std::shared_ptr<Reading>& reading);
  void readByRole(const std::shared_ptr<Reading>& reading);
  void readCell(const std::shared_ptr<Reading>& reading);
  void readNameOf(const AtspiObject& other, const std::shared_ptr<Reading>& reading,
                  std::optional<std::string> AtspiNodeRecord::* member);
  void readChoice(const std::shared_ptr<Reading>& reading);
  void readActions(const std::shared_ptr<Reading>& reading);
  void readShownCharacter(const std::shared_ptr<Reading>& reading);
  void readText(const std::shared_ptr<Reading>& reading);
  bool mayConceal(const AtspiNodeRecord& record) const;
  bool mayHoldWords(const AtspiNodeRecord& record) const;
  void finish(const std::shared_ptr<Reading>& reading);
  void ask(const std::shared_ptr<Reading>& reading, const char* interface, const char* member, AtspiArguments arguments,
           std::function<void(const AtspiReply&)> onReply);
  void get(const std::shared_ptr<Reading>& reading, const char* interface, const char* property,
           std::function<void(const AtspiReply&)> onReply);

  AtspiBus& bus_;
  AtspiObjectTable& objects_;
  const AccessibilityCaptureControl& control_;
  AtspiToolkit toolkit_ = AtspiToolkit::other;
  std::unordered_map<std::uint64_t, AtspiNodeRecord> records_;
  AtspiBulkRecords bulk_;  // what is not read yet
  std::int64_t textBudget_ = maximumTotalTextLength;
  std::function<void(std::uint64_t)> onRead_;  // while a tree is read: what to do with a new record
};

}  // namespace quillo
