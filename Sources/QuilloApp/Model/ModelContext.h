#pragma once

#include "QuilloApp/Model/ActivityMessages.h"
#include "QuilloApp/Model/PublishedModelState.h"
#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// What all flows of the model share.
struct ModelContext {
  explicit ModelContext(const QuilloModelServices& theServices)
      : services(theServices),
        state(theServices.mainExecutor),
        tasks(theServices.mainExecutor),
        flights(theServices.mainExecutor),
        activity(state, theServices.clock, tasks) {}

  QuilloModelServices services;
  PublishedModelState state;
  TaskGroup tasks;
  TaskGroup flights;  ///< the captures, pastes and moves to the Trash: what quitting waits for
  ActivityMessages activity;
  bool isTerminating = false;  ///< no capture, paste or move to the Trash begins any more
};

}  // namespace quillo
