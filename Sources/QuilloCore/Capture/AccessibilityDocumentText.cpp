#include "QuilloCore/Capture/AccessibilityDocumentText.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "QuilloCore/Capture/AccessibilityTextMarkerReader.h"
#include "QuilloCore/Capture/AccessibilityTextReader.h"

namespace quillo {
namespace {

std::vector<std::int64_t> protectedNodeIDs(std::span<const AccessibilityNode> nodes) {
  std::vector<std::int64_t> ids;
  for (const auto& node : nodes) {
    if (node.isProtected) ids.push_back(node.id);
  }
  return ids;
}

std::vector<std::int64_t> incompleteNodeIDs(const AccessibilityCaptureState& state) {
  std::vector<std::int64_t> ids = state.unverifiedNodeIDs();
  for (const auto& truncation : state.truncations()) {
    const bool cutsStructure = truncation.reason == AccessibilityTruncationReason::nodeLimit ||
                               truncation.reason == AccessibilityTruncationReason::depthLimit;
    if (cutsStructure && truncation.nodeID) ids.push_back(*truncation.nodeID);
  }
  return ids;
}

class DocumentTextCapture {
 public:
  DocumentTextCapture(AccessibilitySession& session, AccessibilityCaptureState& state)
      : state_(state), textReader_(session, state), markerReader_(session, textReader_) {}

  void readInto(AccessibilityNode& node, AccessibilityElement element, const AdvertisedAttributeNames& advertised) {
    auto text = markerReader_.isSupported(element, advertised, node.id) ? markerReader_.copyText(element, node.id)
                                                                        : copyRangeText(node, element);
    if (!text) return;
    auto kept = state_.store(std::move(*text), node.id, "AXFullText");
    if (!kept) return;
    std::erase_if(node.attributes, [](const AccessibilityAttribute& attribute) {
      return attribute.name == "AXFullText" ||
             std::ranges::count(AccessibilityCapturePolicy::deferredTextAttributes, attribute.name) > 0;
    });
    node.attributes.push_back({"AXFullText", std::move(*kept)});
    node.sortAttributes();
  }

 private:
  std::optional<std::string> copyRangeText(const AccessibilityNode& node, AccessibilityElement element) {
    const AccessibilityAttributeValue* count = node.attribute("AXNumberOfCharacters");
    const std::int64_t* length = count == nullptr ? nullptr : std::get_if<std::int64_t>(count);
    if (length == nullptr || !textReader_.supportsStringForRange(element, node.id)) return std::nullopt;
    return textReader_.copyFullText(element, *length, node.id);
  }

  AccessibilityCaptureState& state_;
  AccessibilityTextReader textReader_;
  AccessibilityTextMarkerReader markerReader_;
};

}  // namespace

std::vector<bool> nodesReaching(std::span<const AccessibilityNode> nodes, std::span<const std::int64_t> goals) {
  // The references backwards: those to node i stand from first[i] to first[i + 1].
  std::vector<std::size_t> first(nodes.size() + 1, 0);
  for (const auto& node : nodes) {
    for (const std::int64_t child : node.childIDs) ++first[static_cast<std::size_t>(child) + 1];
  }
  for (std::size_t i = 1; i < first.size(); ++i) first[i] += first[i - 1];
  std::vector<std::int64_t> referrers(first.back());
  std::vector<std::size_t> next(first.begin(), first.end() - 1);
  for (const auto& node : nodes) {
    for (const std::int64_t child : node.childIDs) referrers[next[static_cast<std::size_t>(child)]++] = node.id;
  }

  std::vector<bool> reaches(nodes.size(), false);
  std::vector<std::int64_t> open(goals.begin(), goals.end());
  while (!open.empty()) {
    const auto id = static_cast<std::size_t>(open.back());
    open.pop_back();
    if (reaches[id]) continue;
    reaches[id] = true;
    open.insert(open.end(), referrers.begin() + static_cast<std::ptrdiff_t>(first[id]),
                referrers.begin() + static_cast<std::ptrdiff_t>(first[id + 1]));
  }
  return reaches;
}

void captureCompleteDocumentText(AccessibilitySession& session, AccessibilityCaptureState& state,
                                 std::span<AccessibilityNode> nodes, std::span<const AccessibilityElement> elements,
                                 const std::unordered_map<std::int64_t, AdvertisedAttributeNames>& attributeNames) {
  if (attributeNames.empty()) return;
  // Reading texts adds neither protection nor structural trouble, so that both are known now.
  const std::vector<bool> containsProtection = nodesReaching(nodes, protectedNodeIDs(nodes));
  const std::vector<bool> isIncomplete = nodesReaching(nodes, incompleteNodeIDs(state));

  DocumentTextCapture capture(session, state);
  for (auto& node : nodes) {
    if (!AccessibilityCapturePolicy::isDocumentRole(node.role)) continue;
    state.checkpoint();
    const auto index = static_cast<std::size_t>(node.id);
    if (containsProtection[index]) {
      state.addIssue({AccessibilityIssueSeverity::information, "AXProtectedDocumentTextSuppressed",
                      "Complete document text was not read because the document contains protected content.", node.id,
                      std::nullopt});
    } else if (isIncomplete[index]) {
      state.addIssue({AccessibilityIssueSeverity::information, "AXIncompleteDocumentTextSuppressed",
                      "Complete document text was not read because the document structure could not be verified "
                      "completely.",
                      node.id, std::nullopt});
    } else {
      capture.readInto(node, elements[index], attributeNames.at(node.id));
    }
  }
}

}  // namespace quillo
