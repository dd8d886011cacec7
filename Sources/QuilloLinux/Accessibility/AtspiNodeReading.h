#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "QuilloLinux/Accessibility/AtspiBulkCache.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"
#include "QuilloLinux/Accessibility/AtspiReply.h"

namespace quillo {

/// What the readings of one application's objects share.
struct AtspiReadingContext {
  /// Of a text longer than this, only so many characters are fetched; no capture keeps more.
  static constexpr std::int32_t maximumTextLength = 600'000;
  /// Of all texts together; past it a text is only begun, and its announced length tells that the rest is missing.
  static constexpr std::int64_t maximumTotalTextLength = 4'000'000;

  AtspiBus& bus;
  AtspiObjectTable& objects;
  std::function<void(std::uint64_t token, AtspiNodeRecord record)> onRead;  ///< takes each record that is complete
  AtspiToolkit toolkit = AtspiToolkit::other;
  std::int64_t textBudget = maximumTotalTextLength;
};

/// The reading of one accessible object: its record as far as it is known, and how many answers are still to come. The
/// base calls are in flight together; what its role makes worth asking follows as soon as the role is known. It lives
/// as long as its calls. Of a password field no text is ever asked.
class AtspiNodeReading : public std::enable_shared_from_this<AtspiNodeReading> {
 public:
  AtspiNodeReading(AtspiReadingContext& context, std::uint64_t token)
      : context_(context), token_(token), object_(context.objects[token]) {}

  /// Queues the first calls: those for what is not known yet.
  void start(std::optional<AtspiBulkRecord> known);

 private:
  void startFrom(AtspiBulkRecord known);
  void readAttributes();
  void readRole();
  void readLeafOrBase();
  void finishNamedLeaf();
  void readBase();
  void readState();
  void readChildren();
  void readCountedChildren();
  void readExtents();
  void readByRole();
  void readCell();
  void readNameOf(const AtspiObject& other, std::optional<std::string> AtspiNodeRecord::* member);
  void readChoice();
  void readActions();
  void readShownCharacter();
  void readText();
  bool mayConceal() const;
  bool mayHoldWords() const;
  void finish();
  void queue(AtspiCall call);
  void ask(const char* interface, const char* member, AtspiArguments arguments,
           std::function<void(const AtspiReply&)> onReply);
  void get(const char* interface, const char* property, std::function<void(const AtspiReply&)> onReply);

  AtspiReadingContext& context_;
  std::uint64_t token_;
  AtspiObject object_;
  AtspiNodeRecord record_;
  std::optional<std::string> shownCharacter_;  // the first one on the screen, where the text may be concealed
  bool areChildrenKnown_ = false;
  std::size_t openCalls_ = 0;
  void (AtspiNodeReading::*next_)() = nullptr;  // when no call is open any more
};

}  // namespace quillo
