#include "QuilloLinux/Accessibility/AtspiFocusSearch.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <utility>

#include "QuilloLinux/Accessibility/AtspiRegistry.h"

namespace quillo {
namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr std::int32_t maximumMatches = 16;
/// Larger windows are searched as far as this.
constexpr std::size_t maximumObjectCount = 4000;

/// Containers that have the focus when nothing inside them has, or when their toolkit does not tell what has.
bool isContainer(const AtspiFocusCandidate& candidate) {
  using enum AtspiRole;
  if (candidate.is(AtspiState::editable)) return false;
  switch (candidate.role) {
    case application:
    case documentFrame:
    case documentPresentation:
    case documentSpreadsheet:
    case documentText:
    case documentWeb:
    case documentEmail:
    case filler:
    case frame:
    case internalFrame:
    case layeredPane:
    case panel:
    case scrollPane:
    case viewport:
    case window: return true;
    default: return false;
  }
}

bool isTextEntry(AtspiRole role) {
  using enum AtspiRole;
  return role == entry || role == text || role == passwordText || role == terminal || role == autocomplete;
}

/// What is not on the screen has no focus, and the cells of a table are not searched one by one.
bool isWorthSearching(const AtspiFocusCandidate& candidate) {
  return candidate.is(AtspiState::visible) && !candidate.is(AtspiState::managesDescendants) && !isTable(candidate.role);
}

}  // namespace

std::vector<AtspiObject> AtspiFocusSearch::childrenOf(const std::vector<AtspiObject>& parents) {
  std::vector<std::vector<AtspiObject>> answers(parents.size());
  for (std::size_t i = 0; i < parents.size(); ++i) {
    bus_.queue({parents[i], accessible, "GetChildren", {}, [&, i](const AtspiReply& reply) {
                  if (reply.error() == AccessibilityErrorCode::cannotComplete) hasTimedOut_ = true;
                  answers[i] = reply.objects().value_or(std::vector<AtspiObject>{});
                }});
  }
  bus_.drain(control_);
  std::vector<AtspiObject> children;
  for (std::vector<AtspiObject>& answer : answers) {
    std::erase_if(answer, [](const AtspiObject& object) { return object.isNull(); });
    std::ranges::move(answer, std::back_inserter(children));
  }
  return children;
}

std::vector<AtspiFocusCandidate> AtspiFocusSearch::look(const std::vector<AtspiObject>& objects) {
  std::vector<AtspiFocusCandidate> candidates(objects.size());
  for (std::size_t i = 0; i < objects.size(); ++i) {
    AtspiFocusCandidate& candidate = candidates[i];
    candidate.object = objects[i];
    bus_.queue({objects[i], accessible, "GetRole", {}, [&candidate](const AtspiReply& reply) {
                  candidate.role = static_cast<AtspiRole>(reply.uint32().value_or(0));
                }});
    bus_.queue({objects[i], accessible, "GetState", {}, [&candidate, this](const AtspiReply& reply) {
                  if (reply.error() == AccessibilityErrorCode::cannotComplete) hasTimedOut_ = true;
                  candidate.states = reply.states().value_or(0);
                }});
  }
  bus_.drain(control_);
  return candidates;
}

std::vector<AtspiFocusCandidate> AtspiFocusSearch::matchFocused(const std::vector<AtspiObject>& windows) {
  const AtspiStateRule rule{.state = AtspiState::focused, .maximumCount = maximumMatches};
  std::vector<AtspiObject> matches;
  for (const AtspiObject& window : windows) {
    bus_.queue({window, "org.a11y.atspi.Collection", "GetMatches", rule, [&](const AtspiReply& reply) {
                  std::ranges::move(reply.objects().value_or(std::vector<AtspiObject>{}), std::back_inserter(matches));
                }});
  }
  bus_.drain(control_);
  std::erase_if(matches, [](const AtspiObject& object) { return object.isNull(); });
  return look(matches);
}

bool AtspiFocusSearch::isUnbuilt(const std::vector<AtspiFocusCandidate>& focused) {
  return focused.empty() ||
         (focused.back().role == AtspiRole::documentWeb && childrenOf({focused.back().object}).empty());
}

std::vector<AtspiFocusCandidate> AtspiFocusSearch::awaitPage(const AtspiObject& root,
                                                             const std::vector<AtspiObject>& windows) {
  using namespace std::chrono_literals;
  constexpr auto pause = 20ms;
  constexpr auto longest = 400ms;
  std::string toolkit;
  bus_.call(makeGetCall(root, "org.a11y.atspi.Application", "ToolkitName",
                        [&](const AtspiReply& reply) { toolkit = reply.text().value_or(""); }),
            control_);
  if (toolkit != "Chromium") return {};
  // It describes its pages only once somebody has asked for more than roles and states; the focus comes a moment later.
  for (const AtspiObject& window : windows) bus_.queue({window, accessible, "GetAttributes", {}, {}});
  bus_.drain(control_);
  const auto end = std::chrono::steady_clock::now() + longest;
  std::vector<AtspiFocusCandidate> focused = matchFocused(windows);
  while (isUnbuilt(focused) && std::chrono::steady_clock::now() < end && !control_.stopReason()) {
    std::this_thread::sleep_for(pause);
    focused = matchFocused(windows);
  }
  return focused;
}

std::vector<AtspiFocusCandidate> AtspiFocusSearch::searchTree(const std::vector<AtspiObject>& windows) {
  std::vector<AtspiFocusCandidate> focused;
  std::vector<AtspiObject> level = windows;
  std::size_t count = 0;
  while (!level.empty() && count < maximumObjectCount && !control_.stopReason()) {
    std::vector<AtspiObject> children = childrenOf(level);
    if (children.size() > maximumObjectCount - count) children.resize(maximumObjectCount - count);
    count += children.size();
    level.clear();
    for (AtspiFocusCandidate& candidate : look(children)) {
      if (isWorthSearching(candidate)) level.push_back(candidate.object);
      if (candidate.is(AtspiState::focused)) focused.push_back(std::move(candidate));
    }
  }
  return focused;
}

std::expected<AtspiFocusCandidate, FocusedElementAbsence> AtspiFocusSearch::find(std::int32_t processIdentifier) {
  const std::vector<AtspiObject> roots = rootsOfProcess(bus_, control_, processIdentifier);
  // A window that is too large to be searched in time has a focus, but none that we know of.
  const auto absence = [&] {
    return std::unexpected(hasTimedOut_ ? FocusedElementAbsence::noAnswer : FocusedElementAbsence::notExposed);
  };
  if (roots.empty()) return absence();
  // One toolkit does not always tell which of its windows is the active one.
  std::vector<AtspiFocusCandidate> all = look(childrenOf(roots));
  const auto isActive = [](const AtspiFocusCandidate& window) { return window.is(AtspiState::active); };
  if (std::ranges::any_of(all, isActive)) std::erase_if(all, std::not_fn(isActive));
  std::vector<AtspiObject> windows;
  windows.reserve(all.size());
  for (AtspiFocusCandidate& window : all) windows.push_back(std::move(window.object));

  std::vector<AtspiFocusCandidate> candidates = matchFocused(windows);
  if (isUnbuilt(candidates)) candidates = awaitPage(roots.front(), windows);
  if (candidates.empty()) candidates = searchTree(windows);
  if (hasTimedOut_) return absence();
  // The deepest comes last; a text is where one types.
  const AtspiFocusCandidate* best = nullptr;
  for (const AtspiFocusCandidate& candidate : candidates) {
    if (!candidate.is(AtspiState::focused) || isContainer(candidate)) continue;
    if (best == nullptr || isTextEntry(candidate.role) || !isTextEntry(best->role)) best = &candidate;
  }
  return best == nullptr ? absence() : std::expected<AtspiFocusCandidate, FocusedElementAbsence>(*best);
}

}  // namespace quillo
