#include "QuilloLinux/Clipboard/X11SelectionForms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

#include "QuilloCore/Clipboard/PasteboardTypes.h"
#include "QuilloCore/Clipboard/TIFFImageConversion.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

/// The text as the protocol's STRING has it: Latin-1, of whose control characters only tab and line feed.
std::optional<std::string> latin1(std::string_view text) {
  if (findInvalidUtf8(text)) return std::nullopt;
  std::string latin;
  latin.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = nextCodePoint(text, position);
    const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
    if (c > 0xFF || (isControl && c != U'\t' && c != U'\n')) return std::nullopt;
    latin += static_cast<char>(c);
  }
  return latin;
}

class FormList {
 public:
  void add(X11SelectionForm form) {
    const bool isNew = std::ranges::none_of(forms_, [&](const auto& other) { return other.target == form.target; });
    if (isNew) forms_.push_back(std::move(form));
  }

  void addBytes(std::string_view target, std::shared_ptr<const std::string> data) {
    add({.target = std::string(target), .propertyType = std::string(target), .format = 8, .data = std::move(data)});
  }

  /// Under the names by which programs ask for text.
  void addText(const std::shared_ptr<const std::string>& text) {
    addBytes(PasteboardTypes::text, text);
    addBytes("UTF8_STRING", text);
    addBytes("text/plain", text);
    if (auto string = latin1(*text)) addBytes("STRING", std::make_shared<const std::string>(std::move(*string)));
  }

  std::vector<X11SelectionForm> take() { return std::move(forms_); }

 private:
  std::vector<X11SelectionForm> forms_;
};

/// As `packing` wrote it; plain bytes for anything else.
X11SelectionForm unpack(PasteboardRepresentation representation) {
  X11SelectionForm form;
  form.propertyType = representation.type;
  const std::string& packing = representation.packing;
  unsigned format = 0;
  const auto [end, error] = std::from_chars(packing.data(), packing.data() + packing.size(), format);
  const auto length = static_cast<std::size_t>(end - packing.data());
  const bool isFormat = format == 8 || format == 16 || format == 32;
  if (error == std::errc() && isFormat && length + 1 < packing.size()) {
    form.format = static_cast<std::uint8_t>(format);
    form.propertyType = packing.substr(length + 1);
  }
  form.conversion = representation.conversion;
  form.target = std::move(representation.type);
  form.data = std::make_shared<const std::string>(std::move(representation.data));
  return form;
}

}  // namespace

bool X11SelectionForm::makeReady() {
  if (std::exchange(conversion, PasteboardConversion::none) == PasteboardConversion::tiffFromPNG) {
    auto tiff = TIFFImageConversion::fromPNG(*data);
    data = tiff ? std::make_shared<const std::string>(std::move(*tiff)) : nullptr;
  }
  return data != nullptr;
}

std::string X11SelectionForm::packing() const {
  return std::to_string(format) + " " + propertyType;
}

std::vector<X11SelectionForm> makeSelectionForms(std::vector<PasteboardItem> items, PasteboardUse use) {
  FormList forms;
  for (PasteboardItem& item : items) {
    for (PasteboardRepresentation& representation : item.representations) {
      const bool isText = representation.type == PasteboardTypes::text && use != PasteboardUse::restored;
      X11SelectionForm form = unpack(std::move(representation));
      if (isText) {
        forms.addText(form.data);
      } else {
        forms.add(std::move(form));
      }
    }
  }
  if (use == PasteboardUse::borrowed) forms.addBytes(managerHintTarget, std::make_shared<const std::string>("secret"));
  return forms.take();
}

bool isQuestion(std::string_view target) {
  constexpr std::array<std::string_view, 7> questions = {
      "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "INSERT_SELECTION", "INSERT_PROPERTY"};
  return std::ranges::find(questions, target) != questions.end();
}

bool isServerHandle(std::string_view target) {
  constexpr std::array<std::string_view, 9> handles = {
      "BITMAP", "PIXMAP", "DRAWABLE", "COLORMAP", "FOREGROUND", "BACKGROUND", "WINDOW", "CLIENT_WINDOW", "CURSOR"};
  return std::ranges::find(handles, target) != handles.end();
}

}  // namespace quillo
