#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ClipboardPeer.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"

namespace quillo::test {

/// Bytes without a pattern that a misplaced piece would repeat.
inline std::string noise(std::size_t size, std::uint32_t seed = 1) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<char>(seed >> 24U);
  }
  return bytes;
}

inline PasteboardItem textItem(const std::string& text) {
  return {{{.type = "text/plain;charset=utf-8", .data = text}}};
}

/// The clipboard under test, and another program that asks for what is on it.
class Clipboard : public testing::Test {
 protected:
  template <class Operation>
  auto wait(Operation operation) {
    return runBlocking(std::move(operation));
  }
  std::uint64_t changeCount() {
    return runBlocking([&] { return pasteboard_.changeCount(); });
  }
  ClipboardConditionalWriteResult write(std::vector<PasteboardItem> items, PasteboardUse use = PasteboardUse::offered,
                                        std::optional<std::uint64_t> ifUnchangedSince = std::nullopt) {
    return runBlocking([&] { return pasteboard_.replaceContents(items, use, ifUnchangedSince); });
  }
  PasteboardSnapshot captureSnapshot() {
    return runBlocking([&] { return session_.captureSnapshot(); });
  }

  X11Pasteboard pasteboard_;
  ClipboardPayloadWriter writer_;
  SystemPasteboardSession session_{pasteboard_, writer_};
  ClipboardRequestor requestor_;
};

}  // namespace quillo::test
