#include "QuilloLinux/Accessibility/AtspiApplication.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <string>
#include <thread>
#include <utility>

namespace quillo {
namespace {

constexpr const char* application = "org.a11y.atspi.Application";

AtspiToolkit toolkitOf(const std::string& name, const std::string& version) {
  if (name == "GTK" || name == "gtk") return version.starts_with("4") ? AtspiToolkit::gtk4 : AtspiToolkit::gtk3;
  if (name.starts_with("Qt")) return AtspiToolkit::qt;
  if (name == "Chromium") return AtspiToolkit::chromium;
  if (name == "Gecko") return AtspiToolkit::gecko;
  return AtspiToolkit::other;
}

bool isTextRole(AtspiRole role) {
  return mayHoldText(role) || role == AtspiRole::passwordText;
}

}  // namespace

AtspiApplication::AtspiApplication(AtspiBus& bus, AtspiObjectTable& objects, AtspiNodeReader& reader,
                                   const AccessibilityCaptureControl& control, std::span<const AtspiObject> roots)
    : bus_(bus), objects_(objects), reader_(reader), control_(control) {
  for (const AtspiObject& root : roots) roots_.push_back(objects_.tokenOf(root));
  identifyToolkit();
  readWindows();
}

void AtspiApplication::identifyToolkit() {
  std::string name;
  std::string version;
  AccessibilityErrorCode error = AccessibilityErrorCode::success;
  const AtspiObject& root = objects_[roots_.front()];
  // Nothing can be told of an application that does not answer; one that is merely busy answers later.
  do {
    bus_.queue(makeGetCall(root, application, "ToolkitName", [&](const AtspiReply& reply) {
      name = reply.text().value_or("");
      error = reply.error();
    }));
    bus_.queue(makeGetCall(root, application, "Version",
                           [&](const AtspiReply& reply) { version = reply.text().value_or(""); }));
    bus_.drain(control_);
  } while (error == AccessibilityErrorCode::cannotComplete && !control_.stopReason());
  reader_.setToolkit(toolkitOf(name, version));
}

bool AtspiApplication::isSilent(std::span<const std::uint64_t> tokens) const {
  return std::ranges::any_of(tokens, [&](std::uint64_t token) {
    const AtspiNodeRecord* record = reader_.knownRecord(token);
    return record != nullptr && (record->error == AccessibilityErrorCode::cannotComplete ||
                                 record->childrenError == AccessibilityErrorCode::cannotComplete);
  });
}

void AtspiApplication::readWindows() {
  while (true) {
    windows_.clear();
    reader_.read(roots_);
    for (const std::uint64_t root : roots_) {
      if (const AtspiNodeRecord* record = reader_.knownRecord(root)) {
        windows_.insert(windows_.end(), record->children.begin(), record->children.end());
      }
    }
    reader_.read(windows_);
    const bool mayAnswerLater = isSilent(roots_) || isSilent(windows_);
    std::erase_if(windows_, [&](std::uint64_t window) {
      const AtspiNodeRecord* record = reader_.knownRecord(window);
      return record == nullptr || record->error != AccessibilityErrorCode::success;
    });
    // An application without windows is no answer as long as it has given none.
    if (!windows_.empty() || !mayAnswerLater || control_.stopReason()) return;
    reader_.forget();
  }
}

void AtspiApplication::prepareTree() {
  if (isTreePrepared_) return;
  isTreePrepared_ = true;
  if (reader_.toolkit() != AtspiToolkit::chromium) return;
  awaitTree();
  fetchBulk();
}

std::size_t AtspiApplication::sampleTree() {
  constexpr std::size_t windowSample = 400;
  constexpr std::size_t documentSample = 60;
  // Once the pages are known only these are looked at: the rest of the window is there from the beginning.
  const std::vector<std::uint64_t> roots = documents_.empty() ? windows_ : documents_;
  const std::size_t sampledCount = documents_.empty() ? windowSample : documentSample;
  std::size_t childCount = 0;
  std::set<std::uint64_t> seen;
  for (const std::uint64_t root : roots) {
    reader_.readTree(root, sampledCount);
    std::vector<std::uint64_t> pending = {root};
    while (!pending.empty()) {
      const std::uint64_t token = pending.back();
      pending.pop_back();
      const AtspiNodeRecord* record = seen.insert(token).second ? reader_.knownRecord(token) : nullptr;
      if (record == nullptr) continue;
      childCount += record->children.size();
      pending.insert(pending.end(), record->children.begin(), record->children.end());
      const bool isPage = record->role == AtspiRole::documentWeb && record->is(AtspiState::showing);
      if (isPage && std::ranges::count(documents_, token) == 0) documents_.push_back(token);
    }
  }
  return childCount;
}

void AtspiApplication::fetchBulk() {
  using namespace std::chrono_literals;
  constexpr std::size_t worthFetching = 250;
  constexpr int maximumAttempts = 8;
  constexpr auto pause = 15ms;
  if (sampledChildCount_ < worthFetching) return;
  // The cache is filled once, when the first listener comes; so not before the page is there.
  const std::string busName = objects_[roots_.front()].busName;
  listening_.emplace(bus_, busName);
  for (int attempt = 0; attempt < maximumAttempts && !control_.stopReason(); ++attempt) {
    AtspiBulkRecords records = readBulkCache(bus_, busName, objects_, control_);
    if (!records.empty()) return reader_.useBulk(std::move(records));
    std::this_thread::sleep_for(pause);
  }
}

bool AtspiApplication::hasPageWithElements() const {
  return std::ranges::any_of(documents_, [&](std::uint64_t document) {
    const AtspiNodeRecord* record = reader_.knownRecord(document);
    return record != nullptr && !record->children.empty();
  });
}

void AtspiApplication::awaitTree() {
  using namespace std::chrono_literals;
  constexpr int steadyReadingsWanted = 2;
  constexpr auto pause = 50ms;
  constexpr auto longest = 1500ms;
  constexpr auto longestForAnyElement = 3000ms;  // a page without a single element is worth waiting for

  // The calls themselves switch the tree on. How many children the upper elements have stands still when it is built.
  const auto started = std::chrono::steady_clock::now();
  std::size_t previous = 0;
  int steadyReadings = 0;
  while (!control_.stopReason()) {
    const std::size_t current = sampleTree();
    sampledChildCount_ = current;
    isTreeBuilt_ = hasPageWithElements();
    steadyReadings = current == previous ? steadyReadings + 1 : 0;
    previous = current;
    reader_.forget();
    const auto elapsed = std::chrono::steady_clock::now() - started;
    if (isTreeBuilt_ && steadyReadings >= steadyReadingsWanted) break;
    if (elapsed >= (isTreeBuilt_ ? longest : longestForAnyElement)) break;
    std::this_thread::sleep_for(pause);
  }
  readWindows();
}

std::optional<std::uint64_t> AtspiApplication::focusedWindow() const {
  const auto isActive = [&](std::uint64_t window) {
    const AtspiNodeRecord* record = reader_.knownRecord(window);
    return record != nullptr && record->is(AtspiState::active);
  };
  const auto found = std::ranges::find_if(windows_, isActive);
  return found == windows_.end() ? std::nullopt : std::optional(*found);
}

std::optional<std::vector<std::uint64_t>> AtspiApplication::matchFocused(std::uint64_t window) {
  constexpr std::int32_t maximumMatches = 16;
  std::optional<std::vector<std::uint64_t>> matches;
  bus_.call({objects_[window], "org.a11y.atspi.Collection", "GetMatches",
             AtspiStateRule{.state = AtspiState::focused, .maximumCount = maximumMatches},
             [&](const AtspiReply& reply) {
               const auto objects = reply.objects();
               if (!objects) return;
               matches.emplace();
               for (const AtspiObject& object : *objects) {
                 if (!object.isNull()) matches->push_back(objects_.tokenOf(object));
               }
             }},
            control_);
  return matches;
}

std::optional<std::uint64_t> AtspiApplication::bestFocused(const std::vector<std::uint64_t>& candidates) {
  reader_.read(candidates);
  std::optional<std::uint64_t> best;
  bool bestIsText = false;
  for (const std::uint64_t candidate : candidates) {
    const AtspiNodeRecord* record = reader_.knownRecord(candidate);
    if (record == nullptr || !record->is(AtspiState::focused)) continue;
    // Candidates come in tree order, so a later one is deeper; a text is where one types.
    const bool isText = isTextRole(record->role) && !isDocument(record->role);
    if (best && bestIsText && !isText) continue;
    best = candidate;
    bestIsText = isText;
  }
  return best;
}

std::optional<std::uint64_t> AtspiApplication::focusedElement(std::size_t maximumCount) {
  prepareTree();
  const auto window = focusedWindow();
  if (!window) return std::nullopt;
  // Elsewhere the question would be answered by looking at every object, and in a spreadsheet that are billions.
  if (reader_.toolkit() == AtspiToolkit::chromium) {
    if (const auto matches = matchFocused(*window); matches && !matches->empty()) return bestFocused(*matches);
  }
  reader_.readTree(*window, maximumCount);
  std::vector<std::uint64_t> focused;
  std::set<std::uint64_t> seen;
  std::vector<std::uint64_t> pending = {*window};
  while (!pending.empty()) {
    const std::uint64_t token = pending.back();
    pending.pop_back();
    const AtspiNodeRecord* known = seen.insert(token).second ? reader_.knownRecord(token) : nullptr;
    if (known == nullptr) continue;
    if (known->is(AtspiState::focused)) focused.push_back(token);
    pending.insert(pending.end(), known->children.rbegin(), known->children.rend());
  }
  return bestFocused(focused);
}

}  // namespace quillo
