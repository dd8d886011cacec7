#include "Tests/Support/FakeAccessibilityInterface.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "QuilloCore/Support/Utf16.h"

namespace quillo::test {
namespace {

// A marker is the handle of no element: this token and the UTF-16 index that it marks.
constexpr std::uint64_t markerTokens = 1'000'000'000;

AccessibilityElement markerAt(std::int64_t index) {
  return {markerTokens + static_cast<std::uint64_t>(index)};
}

std::int64_t indexOf(AccessibilityElement marker) {
  return static_cast<std::int64_t>(marker.token - markerTokens);
}

void applyFlag(FakeElement& element, const std::string& flag) {
  if (flag == "focused") {
    element.attributes["AXFocused"] = true;
  } else if (flag == "disabled") {
    element.attributes["AXEnabled"] = false;
  } else if (flag == "selected") {
    element.attributes["AXSelected"] = true;
  } else if (flag == "protected") {
    element.attributes["AXContainsProtectedContent"] = true;
  } else if (flag == "secure") {
    element.attributes["AXSubrole"] = std::string("AXSecureTextField");
  } else {
    throw std::invalid_argument("unknown flag " + flag);
  }
}

void applyField(FakeElement& element, const std::string& key, const std::string& value) {
  static const std::map<std::string, std::string> attributes = {
      {"subrole", "AXSubrole"}, {"value", "AXValue"},
      {"help", "AXHelp"},       {"description", "AXDescription"},
      {"label", "AXLabel"},     {"placeholder", "AXPlaceholderValue"},
      {"id", "AXIdentifier"}};
  if (const auto known = attributes.find(key); known != attributes.end()) {
    element.attributes[known->second] = value;
  } else if (key == "number") {
    element.attributes["AXWindowNumber"] = static_cast<std::int64_t>(std::stoll(value));
  } else if (key == "actions") {
    element.actions = splitParts(value, ',');
  } else if (key == "text") {
    element.text = value;
    element.attributes["AXNumberOfCharacters"] = utf16Length(value);
  } else if (key == "frame") {
    const ArtifactRect frame = parseFrame(value);
    element.attributes["AXPosition"] = ArtifactPoint{frame.x, frame.y};
    element.attributes["AXSize"] = ArtifactSize{frame.width, frame.height};
  } else if (key.starts_with("AX")) {
    element.attributes[key] = value;
  } else {
    throw std::invalid_argument("unknown key " + key);
  }
}

}  // namespace

class FakeAccessibilityInterface::Session final : public AccessibilitySession {
 public:
  explicit Session(FakeAccessibilityInterface& owner) : owner_(owner) {}

  AccessibilityResult<AccessibilityElement> applicationElement(std::int32_t /*processIdentifier*/) override {
    return answer({"applicationElement", {}, {}}, [&] { return owner_.application(); });
  }

  AccessibilityResult<std::int32_t> processIdentifier(AccessibilityElement element) override {
    return answer({"processIdentifier", element, {}}, [&] { return owner_.answeredProcessIdentifier; });
  }

  void setMessagingTimeout(AccessibilityElement element, double seconds) override {
    note({"setMessagingTimeout", element, {}, 0, static_cast<std::int64_t>(seconds * 1000)});
  }

  AccessibilityResult<std::vector<std::string>> attributeNames(AccessibilityElement element) override {
    return answer({"attributeNames", element, {}}, [&] {
      std::vector<std::string> names;
      for (const auto& [name, value] : owner_[element].attributes) names.push_back(name);
      for (const auto& [name, error] : owner_[element].errors) names.push_back(name);
      return names;
    });
  }

  AccessibilityResult<std::vector<AccessibilityResult<AccessibilityValue>>> multipleAttributeValues(
      AccessibilityElement element, std::span<const std::string_view> names) override {
    std::string joined;
    for (const std::string_view name : names) joined += (joined.empty() ? "" : ",") + std::string(name);
    return answer({"multipleAttributeValues", element, joined}, [&] {
      std::vector<AccessibilityResult<AccessibilityValue>> values;
      for (const std::string_view name : names) values.push_back(value(element, name));
      return values;
    });
  }

  AccessibilityResult<AccessibilityValue> attributeValue(AccessibilityElement element, std::string_view name) override {
    if (const auto error = note({"attributeValue", element, std::string(name)})) return std::unexpected(*error);
    return value(element, name);
  }

  AccessibilityResult<std::int64_t> attributeValueCount(AccessibilityElement element, std::string_view name) override {
    if (const auto error = note({"attributeValueCount", element, std::string(name)})) return std::unexpected(*error);
    const FakeElement& fake = owner_[element];
    if (const auto claimed = fake.claimedCounts.find(name); claimed != fake.claimedCounts.end()) return claimed->second;
    const auto members = value(element, name);
    if (!members) return std::unexpected(members.error());
    const auto* list = std::get_if<std::vector<AccessibilityElement>>(&*members);
    if (list == nullptr) return std::unexpected(AccessibilityErrorCode::illegalArgument);
    return std::ssize(*list);
  }

  AccessibilityResult<std::vector<AccessibilityValue>> attributeValues(AccessibilityElement element,
                                                                       std::string_view name, std::int64_t index,
                                                                       std::int64_t maximumCount) override {
    if (const auto error = note({"attributeValues", element, std::string(name), index, maximumCount})) {
      return std::unexpected(*error);
    }
    const auto members = value(element, name);
    if (!members) return std::unexpected(members.error());
    std::vector<AccessibilityValue> page;
    const auto& list = std::get<std::vector<AccessibilityElement>>(*members);
    const std::int64_t end =
        owner_[element].ignoresPageEnds ? std::ssize(list) : std::min(std::ssize(list), index + maximumCount);
    for (std::int64_t i = index; i < end; ++i) {
      // An element without a token stands for a member of a wrong kind.
      const AccessibilityElement member = list[static_cast<std::size_t>(i)];
      page.push_back(member.token == 0 ? AccessibilityValue(std::string("stray")) : AccessibilityValue(member));
    }
    return page;
  }

  AccessibilityResult<std::vector<std::string>> parameterizedAttributeNames(AccessibilityElement element) override {
    return answer({"parameterizedAttributeNames", element, {}}, [&] {
      std::vector<std::string> names = owner_[element].parameterized;
      if (owner_[element].text && names.empty()) names.emplace_back("AXStringForRange");
      return names;
    });
  }

  AccessibilityResult<AccessibilityValue> parameterizedAttributeValue(AccessibilityElement element,
                                                                      std::string_view name,
                                                                      const AccessibilityValue& parameter) override {
    FakeCall call{"parameterizedAttributeValue", element, std::string(name)};
    const auto* range = std::get_if<ArtifactTextRange>(&parameter);
    if (range != nullptr) std::tie(call.index, call.count) = std::pair(range->location, range->length);
    if (const auto error = note(call)) return std::unexpected(*error);
    const FakeElement& fake = owner_[element];
    if (!fake.text) return std::unexpected(AccessibilityErrorCode::parameterizedAttributeUnsupported);
    if (name == "AXStringForRange" && range != nullptr) return substring(fake, range->location, range->length);
    return markerAnswer(fake, name, parameter);
  }

  AccessibilityResult<std::vector<std::string>> actionNames(AccessibilityElement element) override {
    return answer({"actionNames", element, {}}, [&] { return owner_[element].actions; });
  }

  void willRead(std::span<const AccessibilityElement> upcoming) override {
    for (const AccessibilityElement element : upcoming) note({"willRead", element, {}});
  }

  std::vector<std::string> captureWarnings() override { return owner_.warnings; }

 private:
  std::optional<AccessibilityErrorCode> note(const FakeCall& call) {
    if (owner_.recordsCalls) owner_.calls.push_back(call);
    return owner_.onCall ? owner_.onCall(call) : std::nullopt;
  }

  template <class Answer>
  auto answer(const FakeCall& call, Answer make) -> AccessibilityResult<decltype(make())> {
    if (const auto error = note(call)) return std::unexpected(*error);
    return make();
  }

  static std::string substring(const FakeElement& fake, std::int64_t location, std::int64_t length) {
    const Utf16Index index(*fake.text);
    std::int64_t end = location + std::min(length, fake.longestTextAnswer.value_or(length));
    const bool endsInsidePair = end < index.length() && index.utf16Offset(index.byteOffset(end)) != end;
    if (endsInsidePair && fake.completesPairs) ++end;
    return std::string(index.substring(location, end));
  }

  static AccessibilityResult<AccessibilityValue> markerAnswer(const FakeElement& fake, std::string_view name,
                                                              const AccessibilityValue& parameter) {
    if (const auto* range = std::get_if<std::vector<AccessibilityElement>>(&parameter)) {
      const std::int64_t begin = indexOf(range->at(0));
      const std::int64_t length = indexOf(range->at(1)) - begin;
      if (name == "AXLengthForTextMarkerRange") return length;
      if (name == "AXStringForTextMarkerRange") return substring(fake, begin, length);
    }
    if (const auto* marker = std::get_if<AccessibilityElement>(&parameter); name == "AXIndexForTextMarker") {
      return indexOf(*marker);
    }
    if (const auto* index = std::get_if<std::int64_t>(&parameter); name == "AXTextMarkerForIndex") {
      return markerAt(*index + fake.markerError);
    }
    return std::unexpected(AccessibilityErrorCode::parameterizedAttributeUnsupported);
  }

  AccessibilityResult<AccessibilityValue> value(AccessibilityElement element, std::string_view name) const {
    const FakeElement& fake = owner_[element];
    if (const auto error = fake.errors.find(name); error != fake.errors.end()) return std::unexpected(error->second);
    const auto found = fake.attributes.find(name);
    if (found == fake.attributes.end()) return std::unexpected(AccessibilityErrorCode::attributeUnsupported);
    return found->second;
  }

  FakeAccessibilityInterface& owner_;
};

FakeAccessibilityInterface::FakeAccessibilityInterface() {
  FakeElement& application = (*this)[add()];
  application.attributes["AXRole"] = std::string("AXApplication");
  application.attributes["AXWindows"] = std::vector<AccessibilityElement>();
}

AccessibilityElement FakeAccessibilityInterface::add(FakeElement element) {
  elements_.push_back(std::move(element));
  return {elements_.size()};
}

FakeElement& FakeAccessibilityInterface::operator[](AccessibilityElement element) {
  return elements_.at(element.token - 1);
}

std::vector<AccessibilityElement> FakeAccessibilityInterface::addWindows(std::string_view notation) {
  std::vector<AccessibilityElement> added;
  for (const NotationNode& tree : parseTrees(notation)) {
    const AccessibilityElement window = addTree(tree, added);
    auto& attributes = (*this)[application()].attributes;
    auto& windows = std::get<std::vector<AccessibilityElement>>(attributes["AXWindows"]);
    windows.push_back(window);
    if (windows.size() == 1) attributes["AXFocusedWindow"] = window;
  }
  return added;
}

AccessibilityElement FakeAccessibilityInterface::addTree(const NotationNode& node,
                                                         std::vector<AccessibilityElement>& added) {
  const AccessibilityElement element = add();
  added.push_back(element);
  FakeElement fake;
  fake.attributes["AXRole"] = accessibilityRoleOf(node.kind);
  if (node.title) fake.attributes["AXTitle"] = *node.title;
  for (const auto& flag : node.flags) applyFlag(fake, flag);
  for (const auto& [key, value] : node.fields) applyField(fake, key, value);
  (*this)[element] = std::move(fake);
  if (node.has("focused")) (*this)[application()].attributes["AXFocusedUIElement"] = element;
  std::vector<AccessibilityElement> children;
  children.reserve(node.children.size());
  for (const NotationNode& child : node.children) children.push_back(addTree(child, added));
  if (!children.empty()) setChildren(element, std::move(children));
  return element;
}

void FakeAccessibilityInterface::setMarkedText(AccessibilityElement element, std::string text,
                                               std::vector<std::string> offered) {
  FakeElement& fake = (*this)[element];
  fake.attributes["AXStartTextMarker"] = markerAt(0);
  fake.attributes["AXEndTextMarker"] = markerAt(utf16Length(text));
  fake.parameterized = std::move(offered);
  fake.text = std::move(text);
}

void FakeAccessibilityInterface::setChildren(AccessibilityElement parent, std::vector<AccessibilityElement> children,
                                             std::string_view attribute) {
  (*this)[parent].attributes[std::string(attribute)] = std::move(children);
}

bool FakeAccessibilityInterface::isProcessTrusted(AccessibilityTrustPrompt /*prompt*/) {
  return isTrusted;
}

std::unique_ptr<AccessibilitySession> FakeAccessibilityInterface::makeSession(
    const WindowCaptureTarget& /*target*/, std::shared_ptr<const AccessibilityCaptureControl> /*control*/) {
  return std::make_unique<Session>(*this);
}

}  // namespace quillo::test
