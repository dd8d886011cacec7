#include <gtest/gtest.h>

#include <QTranslator>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "OffscreenApplication.h"
#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Model/CaptureSummary.h"
#include "QuilloApp/Model/StatusMenu.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Clipboard/PasteboardError.h"
#include "QuilloCore/Paste/PasteMessages.h"
#include "QuilloCore/Shortcuts/GlobalHotKeyRegistrationError.h"
#include "QuilloCore/Updates/SoftwareUpdateError.h"

namespace quillo::test {
namespace {

std::string shown(std::string_view message) {
  return messageText(message).toStdString();
}

TEST(MessageText, isInTheUsersLanguage) {
  const OffscreenApplication application(QLocale(QLocale::German, QLocale::Austria));
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"Capture saved to the library", "Aufnahme in der Bibliothek gesichert"},
      {"1 artifacts moved to Trash", "1 Aufnahme in den Papierkorb verschoben"},
      {"3 artifacts moved to Trash", "3 Aufnahmen in den Papierkorb verschoben"},
      {"812 elements, partial: element limit reached, 3 reading problems",
       "812 Elemente, unvollständig: Höchstzahl der Elemente erreicht, 3 Probleme beim Lesen"},
      {"Put back 1 from Trash; 2 could not be put back: Could not move \"/a: b\": it is %1",
       "1 aus dem Papierkorb zurückgelegt; 2 ließen sich nicht zurücklegen: „/a: b“ lässt sich nicht verschieben: it "
       "is %1"},
      {"Quillo needs Screen Recording and Accessibility permission before capturing. Enable Quillo in System Settings "
       "> Privacy & Security > Accessibility.",
       "Quillo braucht vor dem Aufnehmen die Erlaubnis: Bildschirmaufnahme und Bedienungshilfen. Erlauben Sie Quillo "
       "in den Systemeinstellungen unter Datenschutz & Sicherheit > Bedienungshilfen."},
      {"Selected: %2 and “3”", "Ausgewählt: %2 and “3”"},
      {"many artifacts moved to Trash", "many artifacts moved to Trash"},
      {"what nobody has ever said", "what nobody has ever said"},
      {"", ""}};
  for (const auto& [message, expected] : cases) EXPECT_EQ(expected, shown(message));
}

TEST(MessageText, isTheMessageItselfInItsOwnLanguage) {
  const OffscreenApplication application(QLocale::French);
  EXPECT_EQ("3 artifacts moved to Trash", shown("3 artifacts moved to Trash"));
  EXPECT_EQ("812 elements, partial: cut short", shown("812 elements, partial: cut short"));
}

/// Every case that an error can have, with nothing in it.
template <class Error, class... Cases>
void addCases(std::vector<std::string>& messages, const std::variant<Cases...>* /*type*/) {
  const auto add = [&]<class Case>(std::in_place_type_t<Case>) {
    // What wraps another error says what that one says.
    if constexpr (std::is_default_constructible_v<Case>) {
      const Error error{Case{}};
      messages.push_back(error.errorDescription());
      if constexpr (requires { error.recoverySuggestion().value(); }) {
        messages.push_back(error.recoverySuggestion().value_or(""));
      } else if constexpr (requires { error.recoverySuggestion(); }) {
        messages.push_back(error.recoverySuggestion());
      }
    }
  };
  (add(std::in_place_type<Cases>), ...);
}

template <class... Errors>
void addErrors(std::vector<std::string>& messages) {
  (addCases<Errors>(messages, static_cast<const typename Errors::Case*>(nullptr)), ...);
}

/// Marks what goes through it.
class Marking final : public QTranslator {
 public:
  bool isEmpty() const override { return false; }
  QString translate(const char* /*context*/, const char* source, const char* /*disambiguation*/,
                    int /*count*/) const override {
    return QStringLiteral("»") + QString::fromUtf8(source);
  }
};

TEST(MessageText, isKnownForWhateverTheCoreSays) {
  const OffscreenApplication application;
  Marking marking;
  QCoreApplication::installTranslator(&marking);
  using namespace PasteMessages;
  std::vector<std::string> messages;
  for (const std::string_view message :
       {delivered, deliveredWithoutRestoring, stoppedWithoutRestoring, busy, permissionRequired, focusDestination,
        destinationChangedAtStart, destinationChanged, keystrokeFailed, releaseKeys, clipboardChanged,
        clipboardRejectedArtifact, clipboardRejectedPart, clipboardNotPreservable, openMenuFromDestination,
        hotKeyRecordingGuidance, hotKeyRecordingRefusal})
    messages.emplace_back(message);
  addErrors<ContextCaptureServiceError, WindowScreenshotCaptureError, AccessibilityCaptureError,
            ArtifactRepositoryError, FileSystemError, GlobalHotKeyRegistrationError, PasteboardError,
            SoftwareUpdateError>(messages);
  // The shortcuts have their names.
  std::erase(messages, "Quillo could not reserve the  shortcut (OSStatus 0).");
  for (const char* action : {"capture", "paste"}) {
    const GlobalHotKeyRegistrationError error(
        GlobalHotKeyRegistrationError::HotKeyRegistrationFailed{.action = action, .status = hotKeyIsTaken});
    messages.push_back(error.errorDescription() + " " + error.recoverySuggestion());
  }
  AccessibilitySnapshot snapshot;
  messages.push_back(captureSummary(snapshot));
  snapshot.nodeCount = 1;
  snapshot.wasTruncated = true;
  messages.push_back(captureSummary(snapshot));
  for (const bool isReady : {true, false}) {
    StatusMenuState menu;
    menu.permissions = {.screenRecordingGranted = isReady, .accessibilityGranted = isReady};
    menu.selectedTitle = "A letter";
    menu.isOnboardingCompleted = isReady;
    for (const StatusMenuEntry& entry : rebuildStatusMenu(menu)) {
      if (entry.text != "Quillo") messages.push_back(entry.text);
    }
  }
  EXPECT_GT(messages.size(), 80U);
  for (const std::string& message : messages) {
    if (!message.empty()) EXPECT_TRUE(shown(message).starts_with("»")) << message;
  }
}

}  // namespace
}  // namespace quillo::test
