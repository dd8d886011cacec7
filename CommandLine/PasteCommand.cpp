#include <atomic>
#include <string>
#include <utility>

#include "BackgroundProcess.h"
#include "CommandPayload.h"
#include "Commands.h"
#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Concurrency/TerminationSignals.h"
#include "QuilloCore/Paste/AccessibilityPasteDestination.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"
#include "QuilloCore/Paste/PasteMessages.h"

namespace quillo {
namespace {

/// How the user asks for it again.
constexpr std::string_view shortcut = "quillo paste";

struct PasteReport {
  bool isDelivered = false;
  std::string message;
};

/// Everything that a paste runs on. A request to end stops the delivery, which then gives the clipboard back; while the
/// command only stays for what is on the clipboard, it leaves that to a clipboard manager.
class PasteRun {
 public:
  explicit PasteRun(const PasteDevices& devices)
      : pasteboard_(devices.pasteboard),
        signals_([this] { (isStaying_ ? stayLoop_ : deliveryLoop_).cancel(); }),
        destination_({devices.inputFocus, devices.focusedElement, devices.keystroke, clock_}),
        session_(devices.pasteboard, writer_),
        service_({session_, destination_, devices.modifiers, sleeping_, clock_, &devices.exclusion},
                 deliveryLoop_.executor(), {}) {}

  PasteReport deliver(const PasteOptions& options, const ClipboardPayload& payload) {
    return deliveryLoop_.run([&] { return paste(options, payload); });
  }

  void stayWhileClipboardIsOurs() {
    isStaying_ = true;
    try {
      stayLoop_.run([this] { return pasteboard_.untilReplaced(); });
    } catch (const OperationCancelled&) {
      runBlocking([this] { return pasteboard_.handOver(); });
    }
  }

 private:
  Task<PasteReport> paste(PasteOptions options, ClipboardPayload payload) {
    if (options.delay > 0) {
      Task<> pause = sleepFor(clock_, options.delay);
      co_await std::move(pause);
    }
    std::optional<std::int32_t> process = options.processIdentifier;
    if (!process) {
      auto asking = service_.captureFrontmostDestinationProcessIdentifier();
      process = co_await std::move(asking);
    }
    if (!process) co_return PasteReport{false, pasteMessage(PasteTargetFreezeError::destinationUnavailable, shortcut)};
    auto freezing = service_.resolveTarget(*process, AccessibilityTrustPrompt::askUser);
    auto target = co_await std::move(freezing);
    if (!target) co_return PasteReport{false, pasteMessage(target.error(), shortcut)};
    auto delivering = service_.deliver(std::move(payload), std::move(*target), AccessibilityTrustPrompt::silent);
    const PasteDeliveryResult result = co_await std::move(delivering);
    co_return PasteReport{isDelivered(result), pasteMessage(result)};
  }

  Pasteboard& pasteboard_;
  BlockingLoop deliveryLoop_;
  BlockingLoop stayLoop_;
  std::atomic<bool> isStaying_ = false;
  TerminationSignals signals_;  // before whatever has threads
  SystemMonotonicClock clock_;
  ClockModifierReleaseSleeping sleeping_{clock_};
  AccessibilityPasteDestination destination_;
  ClipboardPayloadWriter writer_;
  SystemPasteboardSession session_;
  PasteDeliveryService service_;
};

}  // namespace

CommandResult runPaste(const PasteOptions& options, const PasteDevices& devices, CommandLibrary& library,
                       BackgroundProcess& background) {
  const ClipboardPayload payload = loadPayload(options.artifact, library);
  PasteRun run(devices);
  CommandResult result;
  try {
    PasteReport report = run.deliver(options, payload);
    if (report.isDelivered) {
      result.output = std::move(report.message);
    } else {
      printError(report.message);
      result.exitStatus = ExitStatus::failed;
    }
  } catch (const OperationCancelled&) {
    result.exitStatus = ExitStatus::interrupted;
  }
  // Whatever came of it, the user's clipboard may be ours to serve now.
  background.release(result);
  run.stayWhileClipboardIsOurs();
  return {};
}

}  // namespace quillo
