// What run-clipboard measures: `own TYPE=FILE…` holds the clipboard until somebody else takes it, `read COUNT` reads
// all that is on it, `borrow` saves it and gives it back. Prints types, bytes and seconds.

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"

namespace quillo::bench {
namespace {

template <class Operation>
double secondsOf(const Operation& operation) {
  const auto started = std::chrono::steady_clock::now();
  operation();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
}

std::string sizeOf(const PasteboardSnapshot& snapshot) {
  std::size_t types = 0;
  std::size_t bytes = 0;
  for (const PasteboardSnapshot::Item& item : snapshot.items) {
    for (const PasteboardRepresentation& representation : item.representations) {
      ++types;
      bytes += representation.data.size();
    }
  }
  return fmt::format("{} {}", types, bytes);
}

int own(std::span<char* const> contents) {
  PasteboardItem item;
  for (const std::string_view content : contents) {
    const std::size_t equals = content.find('=');
    std::ifstream file(std::string(content.substr(equals + 1)), std::ios::binary);
    item.representations.push_back({.type = std::string(content.substr(0, equals)),
                                    .data = std::string(std::istreambuf_iterator<char>(file), {})});
  }
  X11Pasteboard pasteboard;
  runBlocking([&] { return pasteboard.replaceContents({item}, PasteboardUse::restored, std::nullopt); });
  runBlocking([&] { return pasteboard.untilReplaced(); });
  return 0;
}

int read(int count) {
  X11Pasteboard pasteboard;
  ClipboardPayloadWriter writer;
  SystemPasteboardSession session(pasteboard, writer);
  runBlocking([&] { return pasteboard.changeCount(); });
  double best = std::numeric_limits<double>::max();
  PasteboardSnapshot snapshot;
  for (int i = 0; i < count; ++i) {
    best = std::min(best, secondsOf([&] { snapshot = runBlocking([&] { return session.captureSnapshot(); }); }));
  }
  fmt::print("{} {:.4f}\n", sizeOf(snapshot), best);
  return snapshot.isComplete() ? 0 : 1;
}

int borrow() {
  X11Pasteboard pasteboard;
  ClipboardPayloadWriter writer;
  SystemPasteboardSession session(pasteboard, writer);
  runBlocking([&] { return pasteboard.changeCount(); });
  PasteboardSnapshot snapshot;
  const double saving = secondsOf([&] { snapshot = runBlocking([&] { return session.captureSnapshot(); }); });
  const ClipboardPayload payload{.captureID = {}, .pngData = "no picture", .plainText = "text"};
  const auto count = runBlocking([&] { return session.changeCount(); });
  const auto written = runBlocking([&] { return session.write(payload, ClipboardComposition::textOnly, count); });
  auto result = PasteboardConditionalRestoreResult::failed;
  const double restoring = secondsOf(
      [&] { result = runBlocking([&] { return session.restore(snapshot, written.changeCount.value_or(0)); }); });
  fmt::print("{} {:.4f} {:.4f}\n", sizeOf(snapshot), saving, restoring);
  return result == PasteboardConditionalRestoreResult::restored ? 0 : 1;
}

int runMain(std::span<char* const> arguments) {
  const std::string_view deed = arguments.empty() ? "" : arguments[0];
  if (deed == "own") return own(arguments.subspan(1));
  if (deed == "read" && arguments.size() == 2) return read(std::atoi(arguments[1]));
  if (deed == "borrow") return borrow();
  return 2;
}

}  // namespace
}  // namespace quillo::bench

int main(int argumentCount, char** arguments) {
  return quillo::bench::runMain(std::span(arguments + 1, static_cast<std::size_t>(argumentCount - 1)));
}
