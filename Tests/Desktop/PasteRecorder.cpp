#include "PasteRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "QuilloLinux/Windows/X11WindowList.h"
#include "Tests/Support/GoldenFile.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

/// What arrives stands in the window's title, each line behind a "|".
const std::string page = R"(<!doctype html><meta charset=utf-8><title>Recorder</title>
<textarea id=textarea rows=5 cols=40></textarea><div id=editable contenteditable style="min-height:3em">
</div><input id=other>
<script>
const field = document.getElementById(location.hash.slice(1));
const record = line => { document.title += '|' + line; };
const textOf = element => element.value ?? element.innerText.trim();
field.addEventListener('paste', event => {
  for (const item of event.clipboardData.items) {
    if (item.kind != 'file') continue;
    event.preventDefault();
    createImageBitmap(item.getAsFile()).then(image => record(`image ${image.width}x${image.height}`));
  }
});
field.addEventListener('input', () => record('text ' + JSON.stringify(textOf(field))));
other.addEventListener('input', () => record('other ' + JSON.stringify(other.value)));
field.focus();
</script>)";

bool isPage(PasteField field) {
  return field == PasteField::chromiumTextarea || field == PasteField::chromiumEditable;
}

Arguments commandOf(PasteField field, const std::string& path) {
  switch (field) {
    case PasteField::gtk3Editor: return {QUILLO_TEST_PROGRAMS "/paste-recorder.py", "gtk3", path};
    case PasteField::gtk4Entry: return {QUILLO_TEST_PROGRAMS "/paste-recorder.py", "gtk4", path};
    case PasteField::qtEditor: return {QUILLO_QT_PASTE_PROGRAM, path};
    case PasteField::terminal:
      // It has no key for the clipboard until it is given the usual one.
      return {"xterm",
              "-xrm",
              "XTerm*VT100.translations: #override\\nCtrl Shift <Key>V: insert-selection(CLIPBOARD)",
              "-e",
              "sh",
              "-c",
              "stty raw -echo; cat > " + path};
    case PasteField::chromiumTextarea:
    case PasteField::chromiumEditable: break;
  }
  const std::string id = field == PasteField::chromiumTextarea ? "#textarea" : "#editable";
  return chromiumShowing("file://" + writeFile("recorder.html", page) + id);
}

std::string recordPath() {
  static int count = 0;
  return std::string(std::getenv("HOME")) + "/record" + std::to_string(++count);
}

}  // namespace

std::string nameOf(PasteField field) {
  switch (field) {
    case PasteField::gtk3Editor: return "GTK 3 editor";
    case PasteField::gtk4Entry: return "GTK 4 entry";
    case PasteField::qtEditor: return "Qt editor";
    case PasteField::chromiumTextarea: return "Chromium textarea";
    case PasteField::chromiumEditable: return "Chromium contenteditable";
    case PasteField::terminal: return "terminal";
  }
  return {};
}

PasteRecorder::PasteRecorder(PasteField field) : field_(field), path_(recordPath()), program_(commandOf(field, path_)) {
  const WindowCaptureTarget window = awaitWindow(program_);
  if (isPage(field)) {
    EXPECT_TRUE(eventually([&] { return awaitWindow(program_).windowTitle.value_or("").starts_with("Recorder"); }));
  }
}

std::string PasteRecorder::recorded() const {
  if (!isPage(field_)) return std::filesystem::exists(path_) ? readFile(path_) : std::string();
  std::string title = awaitWindow(program_).windowTitle.value_or("");
  title = title.substr(0, title.rfind(" - "));
  const std::size_t start = std::min(title.find('|'), title.size());
  title.erase(0, start + 1);
  std::ranges::replace(title, '|', '\n');
  return title.empty() ? title : title + "\n";
}

std::string PasteRecorder::awaitLine(const std::string& line) const {
  std::string record;
  eventually([&] { return (record = recorded()).ends_with(line + "\n"); }, 5);
  return record;
}

}  // namespace quillo::test
