#include "QuilloLinux/Accessibility/AtspiNodeReader.h"

#include <algorithm>
#include <utility>

#include "QuilloLinux/Accessibility/AtspiActions.h"
#include "QuilloLinux/Accessibility/AtspiConcealedText.h"

namespace quillo {
namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr const char* component = "org.a11y.atspi.Component";
constexpr const char* actionInterface = "org.a11y.atspi.Action";
constexpr const char* textInterface = "org.a11y.atspi.Text";
constexpr std::string_view interfacePrefix = "org.a11y.atspi.";
constexpr std::uint32_t screenCoordinates = 0;
constexpr std::uint32_t windowCoordinates = 1;
constexpr std::uint32_t labelledByRelation = 2;

/// More children than any capture keeps are not looked at one by one.
constexpr std::size_t maximumChildCount = 100'000;

std::vector<std::string> shortInterfaceNames(std::vector<std::string> names) {
  for (std::string& name : names) {
    if (name.starts_with(interfacePrefix)) name.erase(0, interfacePrefix.size());
  }
  return names;
}

/// Controls that toolkits label by a separate element.
bool isLabelledApart(AtspiRole role) {
  using enum AtspiRole;
  return role == entry || role == text || role == passwordText || role == autocomplete || role == comboBox ||
         role == spinButton || role == slider;
}

/// What an application leaves out of its answers may be missing; what it did not answer at all must not look empty.
void noteLoss(AtspiNodeRecord& record, const AtspiReply& reply) {
  const AccessibilityErrorCode error = reply.error();
  if (error == AccessibilityErrorCode::cannotComplete || error == AccessibilityErrorCode::invalidUIElement) {
    record.error = error;
  }
}

/// From here on the object is a password field like any other.
void treatAsPassword(AtspiNodeRecord& record) {
  record.role = AtspiRole::passwordText;
  record.text.reset();
  record.value.reset();
}

}  // namespace

/// One object's reading: the record as far as it is known, and how many answers are still to come.
struct AtspiNodeReader::Reading {
  std::uint64_t token = 0;
  AtspiObject object;
  AtspiNodeRecord record;
  std::optional<std::string> shownCharacter;  // the first one on the screen, where the text may be concealed
  bool areChildrenKnown = false;
  std::size_t openCalls = 0;
  void (AtspiNodeReader::*next)(const std::shared_ptr<Reading>&) = nullptr;  // when no call is open any more
};

void AtspiNodeReader::ask(const std::shared_ptr<Reading>& reading, const char* interface, const char* member,
                          AtspiArguments arguments, std::function<void(const AtspiReply&)> onReply) {
  ++reading->openCalls;
  bus_.queue({reading->object, interface, member, std::move(arguments),
              [this, reading, onReply = std::move(onReply)](const AtspiReply& reply) {
                onReply(reply);
                if (--reading->openCalls == 0) (this->*reading->next)(reading);
              }});
}

void AtspiNodeReader::get(const std::shared_ptr<Reading>& reading, const char* interface, const char* property,
                          std::function<void(const AtspiReply&)> onReply) {
  ask(reading, "org.freedesktop.DBus.Properties", "Get", std::pair(interface, property), std::move(onReply));
}

void AtspiNodeReader::start(std::uint64_t token) {
  auto reading = std::make_shared<Reading>();
  reading->token = token;
  reading->object = objects_[token];
  if (startFromBulk(reading)) return;
  readRole(reading);
  if (toolkit_ == AtspiToolkit::chromium) {
    reading->next = &AtspiNodeReader::readLeafOrBase;
  } else {
    readBase(reading);
  }
}

bool AtspiNodeReader::startFromBulk(const std::shared_ptr<Reading>& reading) {
  auto found = bulk_.extract(reading->token);
  if (found.empty()) return false;
  reading->record = std::move(found.mapped().record);
  reading->record.interfaces = shortInterfaceNames(std::move(reading->record.interfaces));
  reading->areChildrenKnown = found.mapped().areChildrenKnown;
  const AtspiNodeRecord& record = reading->record;
  if (toolkit_ == AtspiToolkit::chromium && record.role == AtspiRole::staticText && !record.name.empty()) {
    reading->next = &AtspiNodeReader::finish;
    readExtents(reading);
  } else {
    reading->next = &AtspiNodeReader::readByRole;
    readAttributes(reading);
  }
  return true;
}

void AtspiNodeReader::readRole(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  ask(reading, accessible, "GetRole", {}, [&record](const AtspiReply& reply) {
    if (const auto role = reply.uint32()) {
      record.role = static_cast<AtspiRole>(*role);
    } else {
      record.error = reply.isError() ? reply.error() : AccessibilityErrorCode::failure;
    }
  });
}

void AtspiNodeReader::readBase(const std::shared_ptr<Reading>& reading) {
  reading->next = &AtspiNodeReader::readByRole;
  readState(reading);
  AtspiNodeRecord& record = reading->record;
  ask(reading, accessible, "GetInterfaces", {}, [&record](const AtspiReply& reply) {
    noteLoss(record, reply);
    record.interfaces = shortInterfaceNames(reply.texts().value_or(std::vector<std::string>{}));
  });
  readAttributes(reading);
  get(reading, accessible, "Description",
      [&record](const AtspiReply& reply) { record.description = reply.text().value_or(""); });
}

void AtspiNodeReader::readAttributes(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  ask(reading, accessible, "GetAttributes", {}, [&record](const AtspiReply& reply) {
    noteLoss(record, reply);
    record.attributes = reply.attributes().value_or(std::vector<std::pair<std::string, std::string>>{});
  });
}

void AtspiNodeReader::readState(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  ask(reading, accessible, "GetState", {}, [&record](const AtspiReply& reply) {
    noteLoss(record, reply);
    record.states = reply.states().value_or(0);
  });
  get(reading, accessible, "Name", [&record](const AtspiReply& reply) {
    noteLoss(record, reply);
    record.name = reply.text().value_or("");
  });
}

void AtspiNodeReader::readExtents(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  // GTK 4 gives the same either way, and writes a warning into its log when it is asked for the screen's.
  const std::uint32_t coordinates = toolkit_ == AtspiToolkit::gtk4 ? windowCoordinates : screenCoordinates;
  ask(reading, component, "GetExtents", coordinates,
      [&record](const AtspiReply& reply) { record.extents = reply.extents(); });
}

void AtspiNodeReader::readChildren(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  ask(reading, accessible, "GetChildren", {}, [this, &record](const AtspiReply& reply) {
    record.childrenError = reply.error();
    const auto children = reply.objects();
    if (!children) return;
    record.children.reserve(std::min(children->size(), maximumChildCount));
    for (const AtspiObject& child : *children) {
      if (record.children.size() == maximumChildCount) break;
      if (!child.isNull()) record.children.push_back(objects_.tokenOf(child));
    }
  });
}

void AtspiNodeReader::readCountedChildren(const std::shared_ptr<Reading>& reading) {
  get(reading, accessible, "ChildCount", [this, reading](const AtspiReply& reply) {
    const auto count = reply.int32();
    if (count && *count >= 0 && std::cmp_less_equal(*count, maximumChildCount)) {
      readChildren(reading);
    } else {
      reading->record.hasTooManyChildren = count.has_value();
      reading->record.childrenError = count ? AccessibilityErrorCode::failure : reply.error();
    }
  });
}

void AtspiNodeReader::readLeafOrBase(const std::shared_ptr<Reading>& reading) {
  if (reading->record.error != AccessibilityErrorCode::success) return finish(reading);
  if (reading->record.role != AtspiRole::staticText) return readBase(reading);
  // Half of a page's elements are plain words, which have no children and nothing else to tell.
  reading->next = &AtspiNodeReader::finishNamedLeaf;
  readState(reading);
  readExtents(reading);
}

void AtspiNodeReader::finishNamedLeaf(const std::shared_ptr<Reading>& reading) {
  const AtspiNodeRecord& record = reading->record;
  if (record.error != AccessibilityErrorCode::success || !record.name.empty()) return finish(reading);
  readBase(reading);  // emphasised words and code have the same role and stand in children
}

void AtspiNodeReader::readByRole(const std::shared_ptr<Reading>& reading) {
  reading->next = &AtspiNodeReader::readChoice;
  AtspiNodeRecord& record = reading->record;
  if (record.error != AccessibilityErrorCode::success) return finish(reading);
  const AtspiRole role = record.role;

  // A spreadsheet would make an object of each of its cells, millions of them, and choke on it.
  if (reading->areChildrenKnown) {
    // The application's cache has told them.
  } else if (record.is(AtspiState::managesDescendants) && isTable(role)) {
    readCountedChildren(reading);
  } else {
    readChildren(reading);
  }
  // Some toolkits complain to their logs when they are asked for what an object does not have.
  if (record.hasInterface("Component")) readExtents(reading);
  const bool isPassword = role == AtspiRole::passwordText;
  if (!isPassword && mayHoldWords(record)) {
    get(reading, textInterface, "CharacterCount", [&record](const AtspiReply& reply) {
      if (const auto count = reply.int32(); count && *count >= 0) {
        record.text.emplace();
        record.text->characterCount = *count;
      }
    });
  }
  if (isInteractive(role) && record.hasInterface("Action")) readActions(reading);
  if (!isPassword && hasRangeValue(role) && record.hasInterface("Value")) {
    get(reading, "org.a11y.atspi.Value", "CurrentValue",
        [&record](const AtspiReply& reply) { record.value = reply.number(); });
  }
  if (role == AtspiRole::link && record.hasInterface("Hyperlink")) {
    ask(reading, "org.a11y.atspi.Hyperlink", "GetURI", std::int32_t{0},
        [&record](const AtspiReply& reply) { record.uri = reply.text(); });
  }
  if (isDocument(role) && record.hasInterface("Document")) {
    ask(reading, "org.a11y.atspi.Document", "GetAttributes", {}, [&record](const AtspiReply& reply) {
      record.documentAttributes = reply.attributes().value_or(std::vector<std::pair<std::string, std::string>>{});
    });
  }
  if (isTableCell(role)) readCell(reading);
  const bool trustsName = toolkit_ != AtspiToolkit::other || !isPassword;
  if (isLabelledApart(role) && (record.name.empty() || !trustsName || toolkit_ == AtspiToolkit::gtk4)) {
    ask(reading, accessible, "GetRelationSet", {}, [this, reading](const AtspiReply& reply) {
      const auto labels = reply.relationTargets(labelledByRelation);
      if (labels && !labels->empty()) readNameOf(labels->front(), reading, &AtspiNodeRecord::labelledBy);
    });
  }
  // Of an unknown toolkit's password field the name may be the secret itself.
  if (!trustsName) record.name.clear();
  if (reading->openCalls == 0) readChoice(reading);
}

void AtspiNodeReader::readNameOf(const AtspiObject& other, const std::shared_ptr<Reading>& reading,
                                 std::optional<std::string> AtspiNodeRecord::* member) {
  if (other.isNull()) return;
  ++reading->openCalls;
  bus_.queue(makeGetCall(other, accessible, "Name", [this, reading, member](const AtspiReply& name) {
    reading->record.*member = name.text();
    if (--reading->openCalls == 0) (this->*reading->next)(reading);
  }));
}

void AtspiNodeReader::readChoice(const std::shared_ptr<Reading>& reading) {
  reading->next = &AtspiNodeReader::readShownCharacter;
  const AtspiNodeRecord& record = reading->record;
  const bool isWeb = toolkit_ == AtspiToolkit::chromium || toolkit_ == AtspiToolkit::gecko;
  if (record.role != AtspiRole::comboBox || !isWeb || record.children.empty()) return readShownCharacter(reading);
  // A closed list of options keeps them in a menu that is hidden, and the menu knows which one is shown.
  const AtspiObject& menu = objects_[record.children.front()];
  ++reading->openCalls;
  bus_.queue(
      {menu, "org.a11y.atspi.Selection", "GetSelectedChild", std::int32_t{0}, [this, reading](const AtspiReply& reply) {
         if (const auto option = reply.object()) readNameOf(*option, reading, &AtspiNodeRecord::choice);
         if (--reading->openCalls == 0) (this->*reading->next)(reading);
       }});
}

void AtspiNodeReader::readCell(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  const bool hasRows = toolkit_ == AtspiToolkit::chromium || toolkit_ == AtspiToolkit::gecko;
  if (!hasRows && record.hasInterface("TableCell")) {
    // The property with the position fails for the first cell of a table.
    ask(reading, "org.a11y.atspi.TableCell", "GetRowColumnSpan", {},
        [&record](const AtspiReply& reply) { record.tableRow = reply.int32(); });
  }
  // A check box in a list tells that it is one by what can be done with it.
  if (toolkit_ == AtspiToolkit::gtk3 && record.name.empty() && record.hasInterface("Action")) {
    ask(reading, actionInterface, "GetName", std::int32_t{0},
        [&record](const AtspiReply& reply) { record.isToggle = reply.text() == "toggle"; });
  }
  if (record.hasInterface("Value")) {
    get(reading, "org.a11y.atspi.Value", "CurrentValue",
        [&record](const AtspiReply& reply) { record.value = reply.number(); });
  }
}

bool AtspiNodeReader::mayHoldWords(const AtspiNodeRecord& record) const {
  if (!record.hasInterface("Text")) return false;
  // Where children stand inside the words of their parent, only the parent's text has these.
  const bool holdsMixedText = toolkit_ == AtspiToolkit::gecko && record.role != AtspiRole::label;
  // Of a status bar's fields only the text tells what they say.
  const bool isNamelessLabel = record.role == AtspiRole::label && record.name.empty();
  return mayHoldText(record.role) || record.is(AtspiState::editable) || holdsMixedText || isNamelessLabel;
}

bool AtspiNodeReader::mayConceal(const AtspiNodeRecord& record) const {
  return toolkit_ == AtspiToolkit::gtk4 && !record.is(AtspiState::multiLine) &&
         (record.role == AtspiRole::text || record.role == AtspiRole::entry || record.is(AtspiState::editable));
}

void AtspiNodeReader::readActions(const std::shared_ptr<Reading>& reading) {
  static constexpr std::size_t maximumNamesAsked = 8;
  ask(reading, actionInterface, "GetActions", {}, [this, reading](const AtspiReply& reply) {
    std::vector<std::string>& actions = reading->record.actions;
    actions = reply.actionNames().value_or(std::vector<std::string>{});
    for (std::size_t i = 0; i < std::min(actions.size(), maximumNamesAsked); ++i) {
      if (isKnownAction(actions[i])) continue;
      ask(reading, actionInterface, "GetName", static_cast<std::int32_t>(i), [reading, i](const AtspiReply& name) {
        if (auto text = name.text(); text && !text->empty()) reading->record.actions[i] = std::move(*text);
      });
    }
  });
}

void AtspiNodeReader::readShownCharacter(const std::shared_ptr<Reading>& reading) {
  AtspiNodeRecord& record = reading->record;
  if (!record.text || record.text->characterCount <= 0) return finish(reading);
  if (!mayConceal(record)) return readText(reading);
  constexpr std::uint32_t oneCharacter = 0;
  reading->next = &AtspiNodeReader::readText;
  ask(reading, textInterface, "GetStringAtOffset", std::pair(std::int32_t{0}, oneCharacter),
      [reading](const AtspiReply& reply) {
        reading->shownCharacter = reply.text();
        if (reading->shownCharacter && isConcealingMark(*reading->shownCharacter)) {
          treatAsPassword(reading->record);
        }
      });
}

void AtspiNodeReader::readText(const std::shared_ptr<Reading>& reading) {
  reading->next = &AtspiNodeReader::finish;
  if (!reading->record.text) return finish(reading);
  AtspiNodeText& text = *reading->record.text;
  const auto length = static_cast<std::int32_t>(
      std::min<std::int64_t>({text.characterCount, maximumTextLength, std::max<std::int64_t>(textBudget_, 1)}));
  textBudget_ -= length;
  ask(reading, textInterface, "GetText", std::pair(std::int32_t{0}, length), [&text, length](const AtspiReply& reply) {
    // Of a text that was cut the application's count says nothing about the part.
    text.text = interpretText(reply.text().value_or(""), length);
  });
  get(reading, textInterface, "CaretOffset", [&text](const AtspiReply& reply) { text.caret = reply.int32(); });
  ask(reading, textInterface, "GetNSelections", {}, [this, reading, &text](const AtspiReply& reply) {
    if (reply.int32().value_or(0) < 1) return;
    ask(reading, textInterface, "GetSelection", std::int32_t{0}, [&text](const AtspiReply& selection) {
      const auto start = selection.int32();
      const auto end = selection.int32();
      if (start && end && *start < *end) text.selection = std::pair(*start, *end);
    });
  });
}

void AtspiNodeReader::finish(const std::shared_ptr<Reading>& reading) {
  const std::optional<std::string>& shown = reading->shownCharacter;
  if (shown && reading->record.text && isConcealed(*shown, reading->record.text->text.text)) {
    treatAsPassword(reading->record);
  }
  records_.insert_or_assign(reading->token, std::move(reading->record));
  if (onRead_) onRead_(reading->token);
}

const AtspiNodeRecord* AtspiNodeReader::knownRecord(std::uint64_t token) const {
  const auto found = records_.find(token);
  return found == records_.end() ? nullptr : &found->second;
}

const AtspiNodeRecord& AtspiNodeReader::record(std::uint64_t token) {
  read(std::span(&token, 1));
  if (const AtspiNodeRecord* known = knownRecord(token)) return *known;
  static const AtspiNodeRecord stopped = [] {
    AtspiNodeRecord record;
    record.error = AccessibilityErrorCode::cannotComplete;
    return record;
  }();
  return stopped;
}

void AtspiNodeReader::read(std::span<const std::uint64_t> tokens) {
  std::size_t next = 0;
  bus_.drain(control_, [&] {
    while (next < tokens.size() && records_.contains(tokens[next])) ++next;
    if (next == tokens.size()) return false;
    start(tokens[next++]);
    return true;
  });
}

bool AtspiNodeReader::isHidden(const AtspiNodeRecord& record) const {
  return record.error == AccessibilityErrorCode::success && toolkit_ != AtspiToolkit::gtk4 &&
         !record.is(AtspiState::visible);
}

bool AtspiNodeReader::isWorthFollowing(const AtspiNodeRecord& record) const {
  // Below a password field stand the pieces of its text.
  return record.role != AtspiRole::passwordText && !isHidden(record);
}

void AtspiNodeReader::readTree(std::uint64_t root, std::size_t maximumCount) {
  std::deque<std::uint64_t> pending = {root};
  std::unordered_map<std::uint64_t, bool> isSeen = {{root, true}};
  const auto follow = [&](std::uint64_t token) {
    if (!isWorthFollowing(records_.at(token))) return;
    for (const std::uint64_t child : records_.at(token).children) {
      if (isSeen.size() >= maximumCount) return;
      if (isSeen.try_emplace(child, true).second) pending.push_back(child);
    }
  };
  onRead_ = follow;
  bus_.drain(control_, [&] {
    while (!pending.empty()) {
      const std::uint64_t token = pending.front();
      pending.pop_front();
      if (records_.contains(token)) {
        follow(token);
        continue;
      }
      start(token);
      return true;
    }
    return false;
  });
  onRead_ = nullptr;
}

}  // namespace quillo
