#include "QuilloApp.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>

namespace quillo {
namespace {

/// More than the model itself allows for what is in flight and for saving.
constexpr std::chrono::seconds endingLimit{10};

}  // namespace

QuilloApp::QuilloApp(MainLoop& loop, const ApplicationPlatform& platform)
    : loop_(loop),
      services_(platform, loop.executor()),
      tasks_(loop.executor()),
      headsUpPanel_(tasks_, [this] { return services_.workers().makeExecutor(); }),
      thumbnailCache_(decoder_, services_.workers()),
      model_(services_.modelServices(headsUpPanel_, fileManager_)),
      delegate_(loop.executor()),
      thumbnails_(thumbnailCache_, tasks_),
      watcher_(platform.libraryPath, loop.executor(), [this] { model_.libraryChanged(); }) {}

QuilloApp::~QuilloApp() {
  const auto ending = spawnTask(loop_.executor(), [this] { return endTasks(); });
  bool isDone = false;
  startTask(loop_.executor(), [&ending, &isDone]() -> Task<> {
    Task<> waiting = ending.value();
    co_await std::move(waiting);
    isDone = true;
  });
  loop_.runUntil([&isDone] { return isDone; }, endingLimit);
}

Task<> QuilloApp::endTasks() {
  Task<> delegate = delegate_.shutDown();
  co_await std::move(delegate);
  Task<> model = model_.shutDown();
  co_await std::move(model);
  tasks_.cancelAll();
  Task<> own = tasks_.whenEmpty();
  co_await std::move(own);
}

void QuilloApp::start(LaunchRequest request) {
  delegate_.installMenuBarUtility(model_,
                                  {.openLibrary = [this] { openLibrary(); }, .quit = [this] { requestQuit(); }});
  observation_ = model_.observe([this](QuilloModelChanges changes) { modelChanged(changes); });
  statusItem_ = std::make_unique<StatusItem>(model_, delegate_, [this] { openLibrary(); });
  // Where no tray is left the library is the application's only face.
  QObject::connect(statusItem_.get(), &StatusItem::shownChanged, statusItem_.get(), [this] {
    if (!statusItem_->isShown()) openLibrary();
  });
  model_.startIfNeeded();
  // The guide comes first; the library would cover it.
  libraryFollowsGuide_ = request == LaunchRequest::open && model_.state().isShowingOnboarding;
  if (libraryFollowsGuide_) return;
  // After the first step of what that has started: the library is read while its window is made.
  tasks_.start([this, request] { return performFirst(request); });
}

Task<> QuilloApp::performFirst(LaunchRequest request) {
  perform(request);
  co_return;
}

void QuilloApp::perform(LaunchRequest request) {
  switch (request) {
    case LaunchRequest::open: return openLibrary();
    case LaunchRequest::background: return;
    case LaunchRequest::capture: return model_.captureFrontmostWindow();
    case LaunchRequest::paste: return model_.pasteSelectedArtifact();
  }
}

void QuilloApp::requestQuit() {
  const auto reply = delegate_.applicationShouldTerminate([this](bool mayQuit) {
    if (mayQuit) return QCoreApplication::exit();
    openLibrary();  // where the edits are that could not be saved, and the reason
  });
  if (reply == TerminationReply::now) QCoreApplication::exit();
}

bool QuilloApp::finishNow() {
  bool isAnswered = false;
  bool mayQuit = false;
  const auto answer = [&](bool decision) {
    isAnswered = true;
    mayQuit = decision;
  };
  if (delegate_.applicationShouldTerminate(answer) == TerminationReply::now) return true;
  loop_.runUntil([&] { return isAnswered; }, endingLimit);
  return mayQuit;
}

bool QuilloApp::saveForSession() {
  const bool isSaved = finishNow();
  model_.resumeAfterTermination();
  return isSaved;
}

void QuilloApp::openLibrary() {
  if (!library_) {
    library_ = std::make_unique<LibraryWindow>(
        model_, thumbnails_,
        LibraryWindow::Requests{.openSetup = [this] { model_.showOnboarding(); },
                                .quit = [this] { requestQuit(); },
                                .closingQuits = [this] { return !statusItem_ || !statusItem_->isShown(); }});
  }
  library_->present();
}

void QuilloApp::modelChanged(QuilloModelChanges changes) {
  if (!changes.contains(QuilloModelField::isShowingOnboarding)) return;
  if (model_.state().isShowingOnboarding) {
    if (!setup_) setup_ = std::make_unique<SetupWindow>(model_, tasks_);
    setup_->present();
  } else if (setup_) {
    setup_->hide();
    if (std::exchange(libraryFollowsGuide_, false)) openLibrary();
  }
}

}  // namespace quillo
