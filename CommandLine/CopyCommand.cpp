#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string>
#include <utility>

#include "BackgroundProcess.h"
#include "CommandPayload.h"
#include "Commands.h"
#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/TerminationSignals.h"
#include "QuilloCore/Paste/PasteMessages.h"

namespace quillo {
namespace {

/// On a terminal only, where somebody may wonder why the command does not end.
void explainWaiting() {
  if (::isatty(STDERR_FILENO) == 0) return;
  std::fputs("On the clipboard until another program takes it. Control-C ends it now.\n", stderr);
}

/// Holds the clipboard until another program takes it, or until it is asked to end; then a clipboard manager may keep
/// what is there.
class CopyRun {
 public:
  explicit CopyRun(Pasteboard& pasteboard) : pasteboard_(pasteboard), signals_([this] { loop_.cancel(); }) {}

  void write(ClipboardPayload payload, ClipboardComposition composition) {
    ClipboardPayloadWriter writer;
    auto operation = [&] { return writer.write(std::move(payload), composition, pasteboard_); };
    if (!loop_.run(operation)) throw std::runtime_error(std::string(PasteMessages::clipboardRejectedArtifact));
  }

  void stayUntilReplaced() {
    try {
      loop_.run([this] { return pasteboard_.untilReplaced(); });
    } catch (const OperationCancelled&) {
      runBlocking([this] { return pasteboard_.handOver(); });
      throw;
    }
  }

 private:
  Pasteboard& pasteboard_;
  BlockingLoop loop_;
  TerminationSignals signals_;  // before whatever has threads
};

}  // namespace

CommandResult runCopy(const CopyOptions& options, Pasteboard& pasteboard, CommandLibrary& library,
                      BackgroundProcess* background) {
  ClipboardPayload payload = loadPayload(options.artifact, library);
  CopyRun run(pasteboard);
  run.write(std::move(payload), options.composition);
  if (background != nullptr) {
    background->release({});
  } else {
    explainWaiting();
  }
  run.stayUntilReplaced();
  return {};
}

}  // namespace quillo
