#include <QApplication>
#include <QCommandLineParser>
#include <QSessionManager>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <mutex>
#include <optional>

#include "DesktopPlatform.h"
#include "QuilloApp.h"
#include "QuilloApp/Interface/ContrastStyle.h"
#include "QuilloApp/Interface/Translations.h"
#include "QuilloApp/Setup/PracticeWindow.h"
#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "QuilloCore/Concurrency/TerminationSignals.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {
namespace {

constexpr int failed = 1;
constexpr int wrongCommandLine = 2;

struct Arguments {
  LaunchRequest request = LaunchRequest::open;
  std::filesystem::path library;
};

/// Nothing when the program is to end with `status` at once.
std::optional<Arguments> readArguments(int& status) {
  QCommandLineParser parser;
  parser.setApplicationDescription(
      QApplication::tr("Turns the window in front of you into text and pixels for a language model."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption library(QStringLiteral("library"), QApplication::tr("The directory that holds the bundles."),
                                   QStringLiteral("DIR"));
  const QCommandLineOption background(QStringLiteral("background"), QApplication::tr("Start without a window."));
  const QCommandLineOption action(QStringLiteral("action"), QApplication::tr("Do this: capture or paste."),
                                  QStringLiteral("NAME"));
  parser.addOptions({library, background, action});
  parser.process(QCoreApplication::arguments());

  Arguments arguments;
  arguments.library = parser.isSet(library)
                          ? std::filesystem::absolute(parser.value(library).toStdString()).lexically_normal()
                          : defaultLibraryPath();
  if (parser.isSet(background)) arguments.request = LaunchRequest::background;
  const QString name = parser.value(action);
  const auto request = launchRequest(name.toStdString());
  const bool isKnownAction = request == LaunchRequest::capture || request == LaunchRequest::paste;
  if (isKnownAction) arguments.request = *request;
  const bool hasUnknownAction = parser.isSet(action) && !isKnownAction;
  if (!hasUnknownAction && parser.positionalArguments().isEmpty()) return arguments;
  std::fprintf(stderr, "quillo-app: %s\n",
               qPrintable(hasUnknownAction ? QApplication::tr("there is no action \"%1\"").arg(name)
                                           : QApplication::tr("unexpected argument")));
  status = wrongCommandLine;
  return std::nullopt;
}

/// What a signal asks for, once there is somebody to ask.
class QuitRequests {
 public:
  void connect(std::function<void()> handler) {
    const std::scoped_lock guard(lock_);
    handler_ = std::move(handler);
    if (handler_ && isPending_) handler_();
  }

  void ask() {
    const std::scoped_lock guard(lock_);
    isPending_ = true;
    if (handler_) handler_();
  }

 private:
  std::mutex lock_;
  std::function<void()> handler_;
  bool isPending_ = false;
};

/// The toolkit ends the program when the display is lost, with everything still in place.
QuilloApp* runningApp = nullptr;

void saveAtExit() {
  if (auto* application = std::exchange(runningApp, nullptr)) application->finishNow();
}

enum class DisplayTrouble : std::uint8_t { none, absent, unanswered };

/// Whether there is something to show windows on. The toolkit would end the program with an abort, or wait for ever for
/// a display that has stopped.
DisplayTrouble displayTrouble() {
  const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (!platform.isEmpty() && !platform.startsWith(QStringLiteral("xcb"))) return DisplayTrouble::none;
  const bool hasName = !qEnvironmentVariableIsEmpty("DISPLAY");
  if (hasName && X11Connection::open()) return DisplayTrouble::none;
  if (platform.isEmpty() && qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) return DisplayTrouble::none;
  return hasName ? DisplayTrouble::unanswered : DisplayTrouble::absent;
}

QString words(DisplayTrouble trouble) {
  return trouble == DisplayTrouble::absent
             ? QApplication::tr("There is no display. Start Quillo inside a desktop session.")
             : QApplication::tr("The display %1 does not answer. Start Quillo inside a desktop session.")
                   .arg(qEnvironmentVariable("DISPLAY"));
}

/// Answers what needs no display, such as the version.
int runWithoutDisplay(int argumentCount, char** arguments, DisplayTrouble trouble) {
  const QCoreApplication application(argumentCount, arguments);
  QCoreApplication::setApplicationName(QStringLiteral("Quillo"));
  QCoreApplication::setApplicationVersion(QStringLiteral(QUILLO_VERSION));
  installTranslations();
  int status = failed;
  if (readArguments(status)) std::fprintf(stderr, "quillo-app: %s\n", qPrintable(words(trouble)));
  return status;
}

int runMain(int argumentCount, char** arguments) {
  if (const auto trouble = displayTrouble(); trouble != DisplayTrouble::none)
    return runWithoutDisplay(argumentCount, arguments, trouble);
  QuitRequests quitRequests;
  const TerminationSignals signals([&] { quitRequests.ask(); });  // before whatever has threads

  QApplication application(argumentCount, arguments);
  QApplication::setApplicationName(QStringLiteral("Quillo"));
  QApplication::setApplicationVersion(QStringLiteral(QUILLO_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("org.quillo.Quillo"));
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new ContrastStyle);
  installTranslations();

  // The guide's practice window is no part of the session's instance.
  if (QCoreApplication::arguments().value(1) == QStringLiteral("--practice")) {
    quitRequests.connect([] { QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection); });
    const int practiced = runPracticeWindow(QCoreApplication::arguments().mid(2));
    quitRequests.connect({});
    return practiced;
  }

  int status = 0;
  const auto parsed = readArguments(status);
  if (!parsed) return status;

  SessionInstance instance;
  switch (instance.claim(parsed->request)) {
    case SessionInstance::Outcome::first: break;
    case SessionInstance::Outcome::handedOver: return 0;
    case SessionInstance::Outcome::unanswered:
      std::fprintf(stderr, "quillo-app: %s\n",
                   qPrintable(QApplication::tr("Quillo is running already, but does not answer.")));
      return failed;
  }

  MainLoop loop;
  DesktopPlatform desktop(parsed->library, loop.executor());
  QuilloApp running(loop, desktop.platform());
  QObject::connect(&instance, &SessionInstance::requested, &application,
                   [&](LaunchRequest request) { running.perform(request); });
  QObject::connect(&instance, &SessionInstance::sessionEnded, &application, [&] { running.requestQuit(); });
  QObject::connect(
      &application, &QGuiApplication::commitDataRequest, &application,
      [&](QSessionManager& session) {
        if (!running.saveForSession()) session.cancel();
      },
      Qt::DirectConnection);
  quitRequests.connect([&running, queue = loop.executor().queue()] { queue->post([&] { running.requestQuit(); }); });
  runningApp = &running;
  std::atexit(saveAtExit);

  running.start(parsed->request);
  status = QApplication::exec();
  quitRequests.connect({});
  runningApp = nullptr;
  return status;
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  try {
    return quillo::runMain(argumentCount, arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillo-app: %s\n", error.what());
    return 1;
  }
}
