#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"

#include <optional>
#include <utility>

#include "QuilloCore/Clipboard/PasteboardTypes.h"
#include "QuilloCore/Clipboard/TIFFImageConversion.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {
namespace {

PasteboardRepresentation representation(std::string_view type, std::string data) {
  return {.type = std::string(type), .data = std::move(data)};
}

PasteboardRepresentation captureMarker(const ClipboardPayload& payload) {
  JsonWriter writer(JsonStyle::compact);
  writer.beginObject();
  writer.key("captureID");
  writer.string(payload.captureID.text());
  writer.key("version");
  writer.string("1");
  writer.endObject();
  return representation(PasteboardTypes::captureMarker, writer.takeText());
}

PasteboardItem imageItem(const ClipboardPayload& payload) {
  PasteboardItem item;
  item.representations.push_back(representation(PasteboardTypes::png, payload.pngData));
  if (TIFFImageConversion::isLikely(payload.pngData)) {
    PasteboardRepresentation& tiff =
        item.representations.emplace_back(representation(PasteboardTypes::tiff, payload.pngData));
    tiff.conversion = PasteboardConversion::tiffFromPNG;
  }
  item.representations.push_back(captureMarker(payload));
  return item;
}

PasteboardItem textItem(const ClipboardPayload& payload) {
  return {{representation(PasteboardTypes::text, payload.plainText),
           representation(PasteboardTypes::html, ClipboardPayloadWriter::htmlData(payload.plainText))}};
}

PasteboardItem singleItem(const ClipboardPayload& payload) {
  return {{representation(PasteboardTypes::png, payload.pngData),
           representation(PasteboardTypes::text, payload.plainText),
           representation(PasteboardTypes::html, ClipboardPayloadWriter::htmlData(payload.plainText)),
           captureMarker(payload)}};
}

}  // namespace

std::vector<PasteboardItem> ClipboardPayloadWriter::makeItems(const ClipboardPayload& payload,
                                                              ClipboardComposition composition) {
  switch (composition) {
    case ClipboardComposition::imageThenText: return {imageItem(payload), textItem(payload)};
    case ClipboardComposition::textThenImage: return {textItem(payload), imageItem(payload)};
    case ClipboardComposition::singleItem: return {singleItem(payload)};
    case ClipboardComposition::imageOnly: return {imageItem(payload)};
    case ClipboardComposition::textOnly: return {textItem(payload)};
  }
  return {};
}

std::string ClipboardPayloadWriter::htmlData(std::string_view plainText) {
  std::string html =
      "<!doctype html>\n<html>\n  <body>\n"
      "    <pre style=\"white-space: pre-wrap; font-family: -apple-system, sans-serif;\">";
  for (const char c : plainText) {
    if (c == '&') {
      html += "&amp;";
    } else if (c == '<') {
      html += "&lt;";
    } else if (c == '>') {
      html += "&gt;";
    } else {
      html += c;
    }
  }
  return html + "</pre>\n  </body>\n</html>";
}

Task<std::vector<PasteboardItem>> ClipboardPayloadWriter::prepareItems(ClipboardPayload payload,
                                                                       ClipboardComposition composition) {
  auto make = [payload = std::move(payload), composition] { return makeItems(payload, composition); };
  return queue_.run(std::move(make));
}

// The pasteboard outlives the task.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-reference-coroutine-parameters)
Task<bool> ClipboardPayloadWriter::write(ClipboardPayload payload, ClipboardComposition composition,
                                         Pasteboard& pasteboard) {
  Task<std::vector<PasteboardItem>> preparing = prepareItems(std::move(payload), composition);
  std::vector<PasteboardItem> items = co_await std::move(preparing);
  Task<ClipboardConditionalWriteResult> writing =
      pasteboard.replaceContents(std::move(items), PasteboardUse::offered, std::nullopt);
  const ClipboardConditionalWriteResult result = co_await std::move(writing);
  co_return result.kind == ClipboardConditionalWriteResult::Kind::written;
}

}  // namespace quillo
