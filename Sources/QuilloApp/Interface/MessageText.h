#pragma once

#include <QString>
#include <string_view>

namespace quillo {

/// A message of the model in the user's language. The model, the core and the command speak the source language alone,
/// so that what they say is the same in a log, a test and a script; what is shown of it passes through here. A text
/// that is no known message stays as it is.
QString messageText(std::string_view message);

}  // namespace quillo
