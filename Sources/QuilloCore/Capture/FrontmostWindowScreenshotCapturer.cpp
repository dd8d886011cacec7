#include "QuilloCore/Capture/FrontmostWindowScreenshotCapturer.h"

#include <algorithm>
#include <concepts>
#include <exception>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/PNGImageEncoder.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo {
namespace {

using Error = WindowScreenshotCaptureError;

template <class Function>
Task<std::invoke_result_t<Function&>> call(Function function) {
  co_return function();
}

/// Calls a blocking function on the queue's thread under a deadline. `timedOut` and `failed` name what went wrong.
template <std::invocable Function, class TimedOut, class Failed>
Task<std::invoke_result_t<Function&>> callWithin(MonotonicClock& clock, TaskExecutor executor, double seconds,
                                                 Function function, TimedOut timedOut, Failed failed) {
  using T = std::invoke_result_t<Function&>;
  try {
    auto operation = [function = std::move(function)] { return call(function); };
    Task<T> running = runCancellableAsyncOperation(clock, executor, seconds, std::move(operation));
    co_return co_await std::move(running);
  } catch (const OperationCancelled&) {
    throw;
  } catch (const WindowScreenshotCaptureError&) {
    throw;
  } catch (const AsyncOperationDeadlineError&) {
    throw Error(timedOut(seconds));
  } catch (const std::exception& error) {
    throw Error(failed(std::string(error.what())));
  }
}

void require(bool isMet, Error::Case otherwise) {
  if (!isMet) throw Error(std::move(otherwise));
}

}  // namespace

FrontmostWindowScreenshotCapturer::FrontmostWindowScreenshotCapturer(std::shared_ptr<WindowImageCapturing> windows,
                                                                     MonotonicClock& clock, SerialQueue& queue,
                                                                     WindowScreenshotCaptureDeadlines deadlines)
    : windows_(std::move(windows)), clock_(clock), queue_(queue), deadlines_(deadlines) {}

Task<WindowScreenshotCapture> FrontmostWindowScreenshotCapturer::capture(WindowCaptureTarget target) {
  require(target.processIdentifier >= 1, Error::InvalidProcessIdentifier{target.processIdentifier});
  require(target.windowID != 0, Error::InvalidWindowIdentifier{target.windowID});

  // The display may keep any question waiting, that for the permission too; and it is not asked for windows before it
  // has allowed them.
  auto listWindows = [windows = windows_] {
    require(windows->isAllowed(), Error::ScreenRecordingPermissionRequired{});
    return windows->capturableWindows();
  };
  auto listingTimedOut = [](double seconds) { return Error::ShareableContentTimedOut{seconds}; };
  auto listingFailed = [](std::string reason) { return Error::ShareableContentUnavailable{std::move(reason)}; };
  Task<std::vector<CapturedWindowMetadata>> listing =
      callWithin(clock_, queue_.executor(), deadlines_.shareableContent(), std::move(listWindows),
                 std::move(listingTimedOut), std::move(listingFailed));
  const std::vector<CapturedWindowMetadata> listed = co_await std::move(listing);
  const auto found = std::ranges::find_if(listed, [&](const CapturedWindowMetadata& window) {
    return window.windowID == target.windowID && window.processIdentifier == target.processIdentifier;
  });
  require(found != listed.end(),
          Error::FrozenWindowUnavailable{target.windowID, target.processIdentifier, target.applicationName});

  Task<BitmapImage> taking = takeImage(target.windowID);
  BitmapImage image = co_await std::move(taking);

  WindowScreenshotCapture result;
  result.pixelWidth = image.width;
  result.pixelHeight = image.height;
  result.window = *found;
  if (image.isConsistent()) result.fingerprint = fingerprintOf(image);
  auto encodeImage = [image = std::move(image)] { return PNGImageEncoder::encode(image); };
  Task<std::string> encoding = queue_.run(std::move(encodeImage));
  result.pngData = co_await std::move(encoding);
  co_return result;
}

Task<PictureFingerprint> FrontmostWindowScreenshotCapturer::lookAgain(WindowCaptureTarget target) {
  Task<BitmapImage> taking = takeImage(target.windowID);
  const BitmapImage image = co_await std::move(taking);
  require(image.isConsistent(), Error::ScreenshotReturnedNoImage{target.windowID});
  co_return fingerprintOf(image);
}

Task<BitmapImage> FrontmostWindowScreenshotCapturer::takeImage(std::uint32_t windowID) {
  auto take = [windows = windows_, windowID] { return windows->image(windowID); };
  auto imageTimedOut = [id = windowID](double seconds) { return Error::ScreenshotTimedOut{id, seconds}; };
  auto imageFailed = [id = windowID](std::string reason) { return Error::ScreenshotFailed{id, std::move(reason)}; };
  Task<std::optional<BitmapImage>> taking =
      callWithin(clock_, queue_.executor(), deadlines_.screenshot(), std::move(take), std::move(imageTimedOut),
                 std::move(imageFailed));
  std::optional<BitmapImage> image = co_await std::move(taking);
  require(image.has_value(), Error::ScreenshotReturnedNoImage{windowID});

  co_return std::move(*image);
}

}  // namespace quillo
