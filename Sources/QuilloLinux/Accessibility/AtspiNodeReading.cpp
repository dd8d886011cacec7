#include "QuilloLinux/Accessibility/AtspiNodeReading.h"

#include <algorithm>
#include <utility>

#include "QuilloLinux/Accessibility/AtspiActions.h"
#include "QuilloLinux/Accessibility/AtspiConcealedText.h"
#include "QuilloLinux/Accessibility/AtspiNames.h"

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

void AtspiNodeReading::queue(AtspiCall call) {
  ++openCalls_;
  call.onReply = [this, self = shared_from_this(), onReply = std::move(call.onReply)](const AtspiReply& reply) {
    onReply(reply);
    if (--openCalls_ == 0) (this->*next_)();
  };
  context_.bus.queue(std::move(call));
}

void AtspiNodeReading::ask(const char* interface, const char* member, AtspiArguments arguments,
                           std::function<void(const AtspiReply&)> onReply) {
  queue({object_, interface, member, std::move(arguments), std::move(onReply)});
}

void AtspiNodeReading::get(const char* interface, const char* property,
                           std::function<void(const AtspiReply&)> onReply) {
  ask("org.freedesktop.DBus.Properties", "Get", std::pair(interface, property), std::move(onReply));
}

void AtspiNodeReading::start(std::optional<AtspiBulkRecord> known) {
  if (known) return startFrom(std::move(*known));
  readRole();
  if (context_.toolkit == AtspiToolkit::chromium) {
    next_ = &AtspiNodeReading::readLeafOrBase;
  } else {
    readBase();
  }
}

void AtspiNodeReading::startFrom(AtspiBulkRecord known) {
  record_ = std::move(known.record);
  record_.interfaces = shortInterfaceNames(std::move(record_.interfaces));
  areChildrenKnown_ = known.areChildrenKnown;
  if (context_.toolkit == AtspiToolkit::chromium && record_.role == AtspiRole::staticText && !record_.name.empty()) {
    next_ = &AtspiNodeReading::finish;
    readExtents();
  } else {
    next_ = &AtspiNodeReading::readByRole;
    readAttributes();
  }
}

void AtspiNodeReading::readRole() {
  ask(accessible, "GetRole", {}, [this](const AtspiReply& reply) {
    if (const auto role = reply.uint32()) {
      record_.role = static_cast<AtspiRole>(*role);
    } else {
      record_.error = reply.isError() ? reply.error() : AccessibilityErrorCode::failure;
    }
  });
}

void AtspiNodeReading::readBase() {
  next_ = &AtspiNodeReading::readByRole;
  readState();
  ask(accessible, "GetInterfaces", {}, [this](const AtspiReply& reply) {
    noteLoss(record_, reply);
    record_.interfaces = shortInterfaceNames(reply.texts().value_or(std::vector<std::string>{}));
  });
  readAttributes();
  get(accessible, "Description", [this](const AtspiReply& reply) { record_.description = reply.text().value_or(""); });
}

void AtspiNodeReading::readAttributes() {
  ask(accessible, "GetAttributes", {}, [this](const AtspiReply& reply) {
    noteLoss(record_, reply);
    record_.attributes = reply.attributes().value_or(std::vector<std::pair<std::string, std::string>>{});
  });
}

void AtspiNodeReading::readState() {
  ask(accessible, "GetState", {}, [this](const AtspiReply& reply) {
    noteLoss(record_, reply);
    record_.states = reply.states().value_or(0);
  });
  get(accessible, "Name", [this](const AtspiReply& reply) {
    noteLoss(record_, reply);
    record_.name = reply.text().value_or("");
  });
}

void AtspiNodeReading::readExtents() {
  // GTK 4 gives the same either way, and writes a warning into its log when it is asked for the screen's.
  const std::uint32_t coordinates = context_.toolkit == AtspiToolkit::gtk4 ? windowCoordinates : screenCoordinates;
  ask(component, "GetExtents", coordinates, [this](const AtspiReply& reply) { record_.extents = reply.extents(); });
}

void AtspiNodeReading::readChildren() {
  ask(accessible, "GetChildren", {}, [this](const AtspiReply& reply) {
    record_.childrenError = reply.error();
    const auto children = reply.objects();
    if (!children) return;
    record_.children.reserve(std::min(children->size(), maximumChildCount));
    for (const AtspiObject& child : *children) {
      if (record_.children.size() == maximumChildCount) break;
      if (!child.isNull()) record_.children.push_back(context_.objects.tokenOf(child));
    }
  });
}

void AtspiNodeReading::readCountedChildren() {
  get(accessible, "ChildCount", [this](const AtspiReply& reply) {
    const auto count = reply.int32();
    if (count && *count >= 0 && std::cmp_less_equal(*count, maximumChildCount)) {
      readChildren();
    } else {
      record_.hasTooManyChildren = count.has_value();
      record_.childrenError = count ? AccessibilityErrorCode::failure : reply.error();
    }
  });
}

void AtspiNodeReading::readLeafOrBase() {
  if (record_.error != AccessibilityErrorCode::success) return finish();
  if (record_.role != AtspiRole::staticText) return readBase();
  // Half of a page's elements are plain words, which have no children and nothing else to tell.
  next_ = &AtspiNodeReading::finishNamedLeaf;
  readState();
  readExtents();
}

void AtspiNodeReading::finishNamedLeaf() {
  if (record_.error != AccessibilityErrorCode::success || !record_.name.empty()) return finish();
  readBase();  // emphasised words and code have the same role and stand in children
}

void AtspiNodeReading::readByRole() {
  next_ = &AtspiNodeReading::readChoice;
  if (record_.error != AccessibilityErrorCode::success) return finish();
  const AtspiRole role = record_.role;

  // A spreadsheet would make an object of each of its cells, millions of them, and choke on it.
  if (areChildrenKnown_) {
    // The application's cache has told them.
  } else if (record_.is(AtspiState::managesDescendants) && isTable(role)) {
    readCountedChildren();
  } else {
    readChildren();
  }
  // Some toolkits complain to their logs when they are asked for what an object does not have.
  if (record_.hasInterface("Component")) readExtents();
  const bool isPassword = role == AtspiRole::passwordText;
  if (!isPassword && mayHoldWords()) {
    get(textInterface, "CharacterCount", [this](const AtspiReply& reply) {
      if (const auto count = reply.int32(); count && *count >= 0) {
        record_.text.emplace();
        record_.text->characterCount = *count;
      }
    });
  }
  if (isInteractive(role) && record_.hasInterface("Action")) readActions();
  if (!isPassword && hasRangeValue(role) && record_.hasInterface("Value")) {
    get("org.a11y.atspi.Value", "CurrentValue", [this](const AtspiReply& reply) { record_.value = reply.number(); });
  }
  if (role == AtspiRole::link && record_.hasInterface("Hyperlink")) {
    ask("org.a11y.atspi.Hyperlink", "GetURI", std::int32_t{0},
        [this](const AtspiReply& reply) { record_.uri = reply.text(); });
  }
  if (isDocument(role) && record_.hasInterface("Document")) {
    ask("org.a11y.atspi.Document", "GetAttributes", {}, [this](const AtspiReply& reply) {
      record_.documentAttributes = reply.attributes().value_or(std::vector<std::pair<std::string, std::string>>{});
    });
  }
  if (isTableCell(role)) readCell();
  const bool trustsName = context_.toolkit != AtspiToolkit::other || !isPassword;
  const bool mayHaveName = !record_.name.empty() && trustsName && context_.toolkit != AtspiToolkit::gtk4 &&
                           !isNamedByItsChoice(record_, context_.toolkit);
  if (isLabelledApart(role) && !mayHaveName) {
    ask(accessible, "GetRelationSet", {}, [this](const AtspiReply& reply) {
      const auto labels = reply.relationTargets(labelledByRelation);
      if (labels && !labels->empty()) readNameOf(labels->front(), &AtspiNodeRecord::labelledBy);
    });
  }
  // Of an unknown toolkit's password field the name may be the secret itself.
  if (!trustsName) record_.name.clear();
  if (openCalls_ == 0) readChoice();
}

void AtspiNodeReading::readNameOf(const AtspiObject& other, std::optional<std::string> AtspiNodeRecord::* member) {
  if (other.isNull()) return;
  queue(makeGetCall(other, accessible, "Name",
                    [this, member](const AtspiReply& name) { record_.*member = name.text(); }));
}

void AtspiNodeReading::readChoice() {
  next_ = &AtspiNodeReading::readShownCharacter;
  const bool isWeb = context_.toolkit == AtspiToolkit::chromium || context_.toolkit == AtspiToolkit::gecko;
  if (record_.role != AtspiRole::comboBox || !isWeb || record_.children.empty()) return readShownCharacter();
  // A closed list of options keeps them in a menu that is hidden, and the menu knows which one is shown.
  const AtspiObject& menu = context_.objects[record_.children.front()];
  queue({menu, "org.a11y.atspi.Selection", "GetSelectedChild", std::int32_t{0}, [this](const AtspiReply& reply) {
           if (const auto option = reply.object()) readNameOf(*option, &AtspiNodeRecord::choice);
         }});
}

void AtspiNodeReading::readCell() {
  const bool hasRows = context_.toolkit == AtspiToolkit::chromium || context_.toolkit == AtspiToolkit::gecko;
  if (!hasRows && record_.hasInterface("TableCell")) {
    // The property with the position fails for the first cell of a table.
    ask("org.a11y.atspi.TableCell", "GetRowColumnSpan", {},
        [this](const AtspiReply& reply) { record_.tableRow = reply.int32(); });
  }
  // A check box in a list tells that it is one by what can be done with it.
  if (context_.toolkit == AtspiToolkit::gtk3 && record_.name.empty() && record_.hasInterface("Action")) {
    ask(actionInterface, "GetName", std::int32_t{0},
        [this](const AtspiReply& reply) { record_.isToggle = reply.text() == "toggle"; });
  }
  if (record_.hasInterface("Value")) {
    get("org.a11y.atspi.Value", "CurrentValue", [this](const AtspiReply& reply) { record_.value = reply.number(); });
  }
}

bool AtspiNodeReading::mayHoldWords() const {
  if (!record_.hasInterface("Text")) return false;
  // Where children stand inside the words of their parent, only the parent's text has these.
  const bool holdsMixedText = context_.toolkit == AtspiToolkit::gecko && record_.role != AtspiRole::label;
  // Of a status bar's fields only the text tells what they say.
  const bool isNamelessLabel = record_.role == AtspiRole::label && record_.name.empty();
  return mayHoldText(record_.role) || record_.is(AtspiState::editable) || holdsMixedText || isNamelessLabel;
}

bool AtspiNodeReading::mayConceal() const {
  return context_.toolkit == AtspiToolkit::gtk4 && !record_.is(AtspiState::multiLine) &&
         (record_.role == AtspiRole::text || record_.role == AtspiRole::entry || record_.is(AtspiState::editable));
}

void AtspiNodeReading::readActions() {
  static constexpr std::size_t maximumNamesAsked = 8;
  ask(actionInterface, "GetActions", {}, [this](const AtspiReply& reply) {
    std::vector<std::string>& actions = record_.actions;
    actions = reply.actionNames().value_or(std::vector<std::string>{});
    for (std::size_t i = 0; i < std::min(actions.size(), maximumNamesAsked); ++i) {
      if (isKnownAction(actions[i])) continue;
      ask(actionInterface, "GetName", static_cast<std::int32_t>(i), [this, i](const AtspiReply& name) {
        if (auto text = name.text(); text && !text->empty()) record_.actions[i] = std::move(*text);
      });
    }
  });
}

void AtspiNodeReading::readShownCharacter() {
  if (!record_.text || record_.text->characterCount <= 0) return finish();
  if (!mayConceal()) return readText();
  constexpr std::uint32_t oneCharacter = 0;
  next_ = &AtspiNodeReading::readText;
  ask(textInterface, "GetStringAtOffset", std::pair(std::int32_t{0}, oneCharacter), [this](const AtspiReply& reply) {
    shownCharacter_ = reply.text();
    if (shownCharacter_ && isConcealingMark(*shownCharacter_)) {
      treatAsPassword(record_);
    }
  });
}

void AtspiNodeReading::readText() {
  next_ = &AtspiNodeReading::finish;
  if (!record_.text) return finish();
  AtspiNodeText& text = *record_.text;
  const auto length = static_cast<std::int32_t>(std::min<std::int64_t>(
      {text.characterCount, AtspiReadingContext::maximumTextLength, std::max<std::int64_t>(context_.textBudget, 1)}));
  context_.textBudget -= length;
  ask(textInterface, "GetText", std::pair(std::int32_t{0}, length), [&text, length](const AtspiReply& reply) {
    // Of a text that was cut the application's count says nothing about the part.
    text.text = interpretText(reply.text().value_or(""), length);
  });
  get(textInterface, "CaretOffset", [&text](const AtspiReply& reply) { text.caret = reply.int32(); });
  ask(textInterface, "GetNSelections", {}, [this, &text](const AtspiReply& reply) {
    if (reply.int32().value_or(0) < 1) return;
    ask(textInterface, "GetSelection", std::int32_t{0}, [&text](const AtspiReply& selection) {
      const auto start = selection.int32();
      const auto end = selection.int32();
      if (start && end && *start < *end) text.selection = std::pair(*start, *end);
    });
  });
}

void AtspiNodeReading::finish() {
  const std::optional<std::string>& shown = shownCharacter_;
  if (shown && record_.text && isConcealed(*shown, record_.text->text.text)) {
    treatAsPassword(record_);
  }
  context_.onRead(token_, std::move(record_));
}

}  // namespace quillo
