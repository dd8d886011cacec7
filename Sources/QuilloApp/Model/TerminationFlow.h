#pragma once

#include "QuilloApp/Model/EditingFlow.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Brings everything to a safe end before the application quits.
class TerminationFlow {
 public:
  static constexpr double flightDeadline = 5;    ///< seconds for what is in flight
  static constexpr double saveDeadline = 4;      ///< seconds for pending edits
  static constexpr double handOverDeadline = 1;  ///< seconds for what was copied to outlive the application

  TerminationFlow(ModelContext& context, EditingFlow& editing) : context_(context), editing_(editing) {}

  Task<bool> prepareForTermination();

 private:
  Task<> waitForFlights();
  Task<bool> saveDraftsInTime();
  Task<bool> saveDrafts();
  Task<> handOverClipboard();

  ModelContext& context_;
  EditingFlow& editing_;
};

}  // namespace quillo
