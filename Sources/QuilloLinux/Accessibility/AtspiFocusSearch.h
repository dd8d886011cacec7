#pragma once

#include <cstdint>
#include <expected>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Paste/FocusedElementProviding.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"
#include "QuilloLinux/Accessibility/AtspiRoles.h"

namespace quillo {

/// What the search wants to know of an object.
struct AtspiFocusCandidate {
  AtspiObject object;
  AtspiRole role = AtspiRole::unknown;
  std::uint64_t states = 0;

  bool is(unsigned state) const { return (states >> state & 1U) != 0; }
};

/// Looks for the object of a process that keys go to, reading no more of its windows than it has to.
class AtspiFocusSearch {
 public:
  AtspiFocusSearch(AtspiBus& bus, const AccessibilityCaptureControl& control) : bus_(bus), control_(control) {}

  std::expected<AtspiFocusCandidate, FocusedElementAbsence> find(std::int32_t processIdentifier);

 private:
  std::vector<AtspiObject> childrenOf(const std::vector<AtspiObject>& parents);
  std::vector<AtspiFocusCandidate> look(const std::vector<AtspiObject>& objects);
  std::vector<AtspiFocusCandidate> matchFocused(const std::vector<AtspiObject>& windows);
  std::vector<AtspiFocusCandidate> awaitPage(const AtspiObject& root, const std::vector<AtspiObject>& windows);
  bool isUnbuilt(const std::vector<AtspiFocusCandidate>& focused);
  std::vector<AtspiFocusCandidate> searchTree(const std::vector<AtspiObject>& windows);

  AtspiBus& bus_;
  const AccessibilityCaptureControl& control_;
  bool hasTimedOut_ = false;
};

}  // namespace quillo
