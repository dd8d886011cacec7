#include <fmt/format.h>

#include <string>
#include <vector>

#include "Findings.h"
#include "QuilloCore/Clipboard/PasteboardError.h"
#include "QuilloLinux/Clipboard/X11ClipboardManagers.h"

namespace quillo {
namespace {

std::string nameOf(const ClipboardProgram& program) {
  if (program.processIdentifier == 0) return "a program that does not say who it is";
  return fmt::format("{} (process {})", program.name, program.processIdentifier);
}

Finding examineManager(const X11ClipboardManagers& managers) {
  if (!managers.takingOver) {
    return {"Clipboard manager", "none runs: what a program has put on the clipboard is gone when the program ends",
            ""};
  }
  return {"Clipboard manager", nameOf(*managers.takingOver) + " keeps what programs leave on the clipboard", ""};
}

}  // namespace

std::vector<Finding> examineClipboard() {
  try {
    const X11ClipboardManagers managers = readX11ClipboardManagers();
    std::vector<Finding> findings = {{"Clipboard", "answers and tells of changes", ""}, examineManager(managers)};
    for (const ClipboardProgram& program : managers.keepingHistory) {
      findings.push_back({"Clipboard history",
                          nameOf(program) + " keeps what is copied; pasted captures ask it not to, which not all heed",
                          ""});
    }
    return findings;
  } catch (const PasteboardError& error) {
    return {{"Clipboard", error.errorDescription(),
             error.recoverySuggestion().value_or("Use a display server that offers it.")}};
  }
}

}  // namespace quillo
