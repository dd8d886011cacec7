#pragma once

#include <functional>
#include <string>

#include "QuilloCore/Clipboard/Pasteboard.h"

namespace quillo::test {

/// An empty clipboard on which the contract can be tried.
struct PasteboardSetting {
  Pasteboard& pasteboard;
  /// Another program copies the text, as "UTF8_STRING" only.
  std::function<void(const std::string&)> copyElsewhere;
};

/// What every platform's clipboard has to do, and a session over it.
void expectPasteboardContract(const PasteboardSetting& setting);

}  // namespace quillo::test
