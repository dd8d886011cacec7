#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "QuilloCore/Support/Utf8.h"
#include "Require.h"

// The bytes are read as a snapshot whose references form any graph: cycles, shared and missing children, chains of any
// depth. Whatever it is, normalising it yields an observation that keeps its invariants, and rendering that a text,
// also when the observation has been damaged since.

namespace {

using namespace quillo;
using fuzzing::require;

constexpr auto roles = std::to_array<std::string_view>({"AXWindow",
                                                        "AXApplication",
                                                        "AXGroup",
                                                        "AXStaticText",
                                                        "AXButton",
                                                        "AXTextField",
                                                        "AXTextArea",
                                                        "AXWebArea",
                                                        "AXDocument",
                                                        "AXTable",
                                                        "AXRow",
                                                        "AXColumn",
                                                        "AXCell",
                                                        "AXOutline",
                                                        "AXList",
                                                        "AXHeading",
                                                        "AXLink",
                                                        "AXImage",
                                                        "AXCheckBox",
                                                        "AXMenu",
                                                        "AXMenuItem",
                                                        "AXScrollArea",
                                                        "AXLandmarkNavigation",
                                                        "AXTabGroup",
                                                        "AXUnknown",
                                                        ""});
constexpr auto subroles = std::to_array<std::string_view>(
    {"AXOutlineRow", "AXTableRow", "AXColumnHeader", "AXLandmarkNavigation", "AXSecureTextField", "AXContentList", ""});
constexpr auto textNames = std::to_array<std::string_view>(
    {"AXTitle", "AXValue", "AXDescription", "AXHelp", "AXPlaceholderValue", "AXFullText", "AXSelectedText", "AXLabel",
     "AXRoleDescription", "AXIdentifier", "AXURL", "AXARIACurrent", "AXValueDescription"});
constexpr auto flagNames = std::to_array<std::string_view>(
    {"AXFocused", "AXSelected", "AXEnabled", "AXHidden", "AXOffscreen", "AXVisible", "AXExpanded", "AXEdited"});
constexpr auto numberNames = std::to_array<std::string_view>(
    {"AXHeadingLevel", "AXDisclosureLevel", "AXIndex", "AXValue", "AXARIASetSize", "AXChecked"});

template <std::size_t count>
std::string pick(FuzzedDataProvider& bytes, const std::array<std::string_view, count>& names) {
  return std::string(names[bytes.ConsumeIntegralInRange<std::size_t>(0, count - 1)]);
}

std::string readText(FuzzedDataProvider& bytes, std::size_t maximumLength) {
  return replacingInvalidUtf8(bytes.ConsumeRandomLengthString(maximumLength));
}

AccessibilityAttribute readAttribute(FuzzedDataProvider& bytes) {
  switch (bytes.ConsumeIntegralInRange<int>(0, 6)) {
    case 0: return {pick(bytes, flagNames), bytes.ConsumeBool()};
    case 1: return {pick(bytes, numberNames), bytes.ConsumeIntegral<std::int64_t>()};
    case 2:
      return {bytes.ConsumeBool() ? "AXSelectedTextRange" : "AXVisibleCharacterRange",
              ArtifactTextRange{bytes.ConsumeIntegral<std::int8_t>(), bytes.ConsumeIntegral<std::int16_t>()}};
    case 3: return {"AXActions", std::vector<std::string>{"AXPress", readText(bytes, 6)}};
    case 4: return {pick(bytes, textNames), RedactedValue{}};
    default: return {pick(bytes, textNames), readText(bytes, 64)};
  }
}

std::optional<std::int64_t> readNodeID(FuzzedDataProvider& bytes, std::int64_t nodeCount) {
  if (bytes.ConsumeBool()) return std::nullopt;
  return bytes.ConsumeIntegralInRange<std::int64_t>(-1, nodeCount + 1);
}

AccessibilitySnapshot readSnapshot(FuzzedDataProvider& bytes) {
  AccessibilitySnapshot snapshot;
  const bool isChain = bytes.ConsumeBool();
  // Mostly small, so that many are tried; now and then deeper than any stack would bear.
  const bool isHuge = isChain && bytes.ConsumeIntegral<std::uint8_t>() == 255;
  const auto nodeCount = bytes.ConsumeIntegralInRange<std::int64_t>(0, isHuge ? 3000 : 60);
  snapshot.rootKind = bytes.ConsumeBool() ? AccessibilityRootKind::application : AccessibilityRootKind::focusedWindow;
  snapshot.rootID = bytes.ConsumeBool() ? 0 : bytes.ConsumeIntegralInRange<std::int64_t>(-1, nodeCount);
  snapshot.focusedNodeID = readNodeID(bytes, nodeCount);
  for (std::int64_t id = 0; id < nodeCount && (isChain || bytes.remaining_bytes() > 0); ++id) {
    AccessibilityNode node;
    node.id = bytes.ConsumeIntegralInRange<int>(0, 30) == 30 ? 0 : id;  // now and then not unique
    node.role = pick(bytes, roles);
    if (bytes.ConsumeBool()) node.subrole = pick(bytes, subroles);
    if (id > 0) node.parentID = isChain ? id - 1 : bytes.ConsumeIntegralInRange<std::int64_t>(0, id - 1);
    node.depth = bytes.ConsumeIntegralInRange<int>(0, 30) == 30 ? -7 : id;
    if (isChain && id + 1 < nodeCount) node.childIDs.push_back(id + 1);
    for (int i = bytes.ConsumeIntegralInRange<int>(0, 3); i > 0; --i) {
      node.childIDs.push_back(bytes.ConsumeIntegralInRange<std::int64_t>(-1, nodeCount));
    }
    if (bytes.ConsumeBool()) {
      node.frame = ArtifactRect{bytes.ConsumeIntegral<std::int8_t>() * 9.0, bytes.ConsumeIntegral<std::int8_t>() * 9.0,
                                bytes.ConsumeIntegral<std::int8_t>() * 9.0, bytes.ConsumeIntegral<std::int8_t>() * 9.0};
    }
    node.isProtected = bytes.ConsumeIntegralInRange<int>(0, 15) == 15;
    for (int i = bytes.ConsumeIntegralInRange<int>(0, 3); i > 0; --i) node.attributes.push_back(readAttribute(bytes));
    node.sortAttributes();
    snapshot.nodes.push_back(std::move(node));
  }
  snapshot.deriveFields();
  return snapshot;
}

void requireInvariants(const InterfaceObservation& observation) {
  const auto& elements = observation.elements;
  require(!elements.empty() && elements[0].id == observation.rootElementID, "the first element is the root");
  require(!elements[0].parentID && elements[0].depth == 0, "the root has no parent");
  std::map<std::string_view, const InterfaceElement*> byID;
  std::set<std::int64_t> sourceNodeIDs;
  for (const InterfaceElement& element : elements) {
    require(byID.emplace(element.id, &element).second, "element ids are unique");
    require(!element.sourceNodeID || sourceNodeIDs.insert(*element.sourceNodeID).second, "a node occurs once");
  }
  std::vector<std::string_view> preOrder;
  std::vector<std::string_view> open = {observation.rootElementID};
  while (!open.empty()) {
    const InterfaceElement& element = *byID.at(open.back());
    open.pop_back();
    preOrder.push_back(element.id);
    require(preOrder.size() <= elements.size(), "the elements form a tree");
    for (auto id = element.childIDs.rbegin(); id != element.childIDs.rend(); ++id) {
      const auto child = byID.find(*id);
      require(child != byID.end() && child->second->parentID == element.id, "a child names its parent");
      require(child->second->depth == element.depth + 1, "a child stands one level deeper");
      open.push_back(*id);
    }
  }
  require(preOrder.size() == elements.size(), "every element hangs in the tree");
  for (std::size_t i = 0; i < elements.size(); ++i) require(elements[i].id == preOrder[i], "elements are in pre-order");
  const auto& counts = observation.completeness;
  require(counts.ignoredGraphReferenceCount == counts.sharedGraphReferenceCount.value_or(0) +
                                                   counts.cyclicGraphReferenceCount.value_or(0) +
                                                   counts.unavailableGraphReferenceCount.value_or(0),
          "the ignored references are counted by kind");
}

/// Breaks what a file could break: references, ranges, depths and texts.
void damage(InterfaceObservation& observation, FuzzedDataProvider& bytes) {
  auto& elements = observation.elements;
  const auto anyElement = [&]() -> InterfaceElement& {
    return elements[bytes.ConsumeIntegralInRange<std::size_t>(0, elements.size() - 1)];
  };
  for (int i = elements.empty() ? 0 : bytes.ConsumeIntegralInRange<int>(0, 8); i > 0; --i) {
    InterfaceElement& element = anyElement();
    switch (bytes.ConsumeIntegralInRange<int>(0, 8)) {
      case 0: element.childIDs.push_back(anyElement().id); break;
      case 1: element.childIDs.clear(); break;
      case 2: element.parentID = anyElement().id; break;
      case 3: element.id = anyElement().id; break;
      case 4: observation.rootElementID = element.id + (bytes.ConsumeBool() ? "?" : ""); break;
      case 5: element.depth = bytes.ConsumeIntegral<std::int64_t>(); break;
      case 6: element.content = readText(bytes, 40); break;
      case 7: element.state.focused = element.state.selected = true; break;
      default:
        element.properties.selectedTextRange = {bytes.ConsumeIntegral<std::int64_t>(),
                                                bytes.ConsumeIntegral<std::int64_t>()};
        element.properties.visibleTextRange = {bytes.ConsumeIntegral<std::int8_t>(),
                                               bytes.ConsumeIntegral<std::int8_t>()};
    }
  }
}

void requireText(const InterfaceObservation& observation) {
  const std::string text = InterfaceObservationLLMRenderer::render(observation);
  require(!findInvalidUtf8(text) && !text.ends_with('\n'), "the text is well-formed, without a final line feed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  FuzzedDataProvider bytes(data, size);
  const AccessibilitySnapshot snapshot = readSnapshot(bytes);
  for (const bool synthesizesRoot : {true, false}) {
    const InterfaceNormalizationOptions options{.synthesizeApplicationRoot = synthesizesRoot,
                                                .inferConservativeActions = synthesizesRoot};
    InterfaceObservation observation = AccessibilitySemanticNormalizer::normalize(snapshot, options);
    if (!observation.elements.empty()) requireInvariants(observation);
    requireText(observation);
    damage(observation, bytes);
    requireText(observation);
  }
  return 0;
}
