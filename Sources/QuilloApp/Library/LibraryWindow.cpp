#include "QuilloApp/Library/LibraryWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <utility>

#include "QuilloApp/Inspector/InspectorPane.h"
#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloApp/Library/CaptureList.h"
#include "QuilloApp/Library/ElidedLabel.h"
#include "QuilloApp/Library/FeedPane.h"
#include "QuilloApp/Library/MessagePage.h"
#include "QuilloApp/Library/QuickLook.h"

namespace quillo {
namespace {

constexpr int unit = 8;

struct ActivityLine {
  std::string_view symbol;
  QString text;
};

/// What the symbol tells those who do not see it.
QString symbolInWords(Activity::Kind kind) {
  if (kind == Activity::Kind::failure) return LibraryWindow::tr("Problem");
  return kind == Activity::Kind::idle || kind == Activity::Kind::success ? LibraryWindow::tr("Done")
                                                                         : LibraryWindow::tr("In progress");
}

ActivityLine activityLine(const Activity& activity) {
  switch (activity.kind) {
    case Activity::Kind::idle: return {"checkmark.circle", LibraryWindow::tr("Ready")};
    case Activity::Kind::loading: return {"hourglass", LibraryWindow::tr("Loading artifacts…")};
    case Activity::Kind::capturing: return {"hourglass", LibraryWindow::tr("Reading window and interface…")};
    case Activity::Kind::saving: return {"hourglass", LibraryWindow::tr("Saving changes…")};
    case Activity::Kind::pasting: return {"hourglass", LibraryWindow::tr("Pasting capture…")};
    case Activity::Kind::success: return {"checkmark.circle", messageText(activity.message)};
    case Activity::Kind::failure: return {"exclamationmark.triangle", messageText(activity.message)};
  }
  return {};
}

/// What stands where no capture is shown.
MessagePage::Message messageInstead(const QuilloModelState& state) {
  using Way = MessagePage::Way;
  if (const auto& failure = state.libraryCondition.listingFailure)
    return {LibraryWindow::tr("The library cannot be read"), QString::fromStdString(*failure), true, Way::retry};
  if (const auto& failure = state.selectionFailure)
    return {LibraryWindow::tr("This capture cannot be opened"), QString::fromStdString(*failure), true, Way::discard};
  if (state.activity.kind == Activity::Kind::loading) return {.title = LibraryWindow::tr("Loading artifacts…")};
  if (!state.artifacts.empty() || !state.libraryCondition.damagedBundles.empty())
    return {.title = LibraryWindow::tr("Nothing selected"),
            .text = LibraryWindow::tr("Choose a capture to read, correct, copy or paste it.")};
  const QString keys = QString::fromStdString(state.hotKeyConfiguration.capture.displayString());
  return {.title = LibraryWindow::tr("No captures yet"),
          .text = LibraryWindow::tr("Bring a window to the front and press %1. Its pixels and its text appear here.")
                      .arg(keys)};
}

}  // namespace

LibraryWindow::LibraryWindow(QuilloModel& model, Thumbnails& thumbnails, Requests requests)
    : model_(model),
      thumbnails_(thumbnails),
      requests_(std::move(requests)),
      feed_(new FeedPane(model, thumbnails, this)),
      pages_(new QStackedWidget(this)),
      message_(new MessagePage(this)),
      inspector_(new InspectorPane(model, thumbnails.tasks(), this)),
      activitySymbol_(new QLabel(this)),
      activity_(new ElidedLabel(QStringLiteral("activity"), this)),
      undo_(new QPushButton(symbolIcon("arrow.counterclockwise"), QString(), this)) {
  setObjectName(QStringLiteral("library"));
  setWindowTitle(tr("Quillo"));
  setWindowIcon(applicationIcon());
  resize(1120, 760);
  setMinimumSize(720, 480);

  feed_->setObjectName(QStringLiteral("feed"));
  inspector_->setObjectName(QStringLiteral("inspector"));
  pages_->addWidget(message_);
  pages_->addWidget(inspector_);
  auto* panes = new QSplitter(this);
  panes->setObjectName(QStringLiteral("panes"));
  panes->setHandleWidth(1);
  panes->addWidget(feed_);
  panes->addWidget(pages_);
  panes->setCollapsible(0, true);
  panes->setCollapsible(1, false);
  panes->setStretchFactor(1, 1);
  panes->setSizes({320, 800});
  divider_ = panes->handle(1);
  divider_->setAutoFillBackground(true);
  colorDivider();
  setCentralWidget(panes);

  undo_->setObjectName(QStringLiteral("undoTrash"));
  undo_->setFlat(true);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(unit, 0, unit, 0);
  statusBar()->addWidget(activitySymbol_);
  statusBar()->addWidget(activity_, 1);
  statusBar()->addPermanentWidget(undo_);

  makeMenus();
  connectControls();
  observation_ = model_.observe([this](QuilloModelChanges changes) { update(changes); });
  update(QuilloModelChanges::everything());
  feed_->list().setFocus();
}

LibraryWindow::~LibraryWindow() = default;

void LibraryWindow::makeMenus() {
  QMenu* menu = nullptr;
  const auto add = [&](const char* symbol, const QString& text, const QKeySequence& keys, auto&& action) {
    QAction* item = menu->addAction(symbolIcon(symbol), text, keys, this, std::forward<decltype(action)>(action));
    item->setObjectName(text);
    return item;
  };
  menu = menuBar()->addMenu(tr("C&apture"));
  selectionActions_ = {
      add("doc.on.doc", tr("&Copy Selected Capture"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
          [this] { model_.copySelectedArtifactToClipboard(); }),
      add("viewfinder", tr("&Look at Screenshot"), QKeySequence(Qt::CTRL | Qt::Key_Y), [this] { toggleQuickLook(); }),
      add("keyboard", tr("&Rename"), QKeySequence(Qt::Key_F2), [this] { inspector_->focusTitle(); }),
      add("folder", tr("Show &Files"), {}, [this] { model_.revealSelectedArtifact(); })};
  menu->addSeparator();
  selectionActions_.append(
      add("trash", tr("Move to &Trash"), QKeySequence(Qt::CTRL | Qt::Key_Delete), [this] { moveSelectedToTrash(); }));

  menu = menuBar()->addMenu(tr("&Edit"));
  undoAction_ = add("arrow.counterclockwise", QString(), QKeySequence::Undo, [this] { model_.undoMoveToTrash(); });
  undoAction_->setObjectName(QStringLiteral("undo"));
  menu->addSeparator();
  add("rectangle.stack", tr("Select &All Captures"), {}, [this] {
    feed_->list().setFocus(Qt::ShortcutFocusReason);
    feed_->list().selectAll();
  });
  add("magnifyingglass", tr("&Find"), QKeySequence::Find, [this] { feed_->focusSearch(); });
  add("", tr("&Show All Captures"), {}, [this] { feed_->clearSearch(); });

  menu = menuBar()->addMenu(tr("&View"));
  QAction* showsList = menu->addAction(tr("&List of Captures"), QKeySequence(Qt::Key_F9));
  showsList->setObjectName(QStringLiteral("showsList"));
  showsList->setCheckable(true);
  showsList->setChecked(true);
  connect(showsList, &QAction::toggled, feed_, &QWidget::setVisible);
  add("arrow.clockwise", tr("&Reload"), QKeySequence::Refresh, [this] { model_.reloadArtifacts(); });

  menu = menuBar()->addMenu(tr("&Quillo"));
  add("checklist", tr("&Setup && Shortcuts…"), {}, [this] { requests_.openSetup(); });
  add("", tr("&Close"), QKeySequence::Close, [this] { close(); });
  add("power", tr("&Quit Quillo"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { requests_.quit(); });
}

void LibraryWindow::connectControls() {
  CaptureList& list = feed_->list();
  connect(&list, &QListView::activated, this, [this] { inspector_->focusTitle(); });
  connect(&list, &CaptureList::lookRequested, this, &LibraryWindow::toggleQuickLook);
  connect(feed_, &FeedPane::currentChanged, this, [this] {
    if (quickLook_ && quickLook_->isVisible()) quickLook_->show(feed_->currentTitle(), feed_->currentScreenshotPath());
  });

  // In the list a single key suffices; in a field it edits the text.
  const auto onList = [&](const QKeySequence& keys, auto&& action) {
    auto* shortcut = new QShortcut(keys, &list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, std::forward<decltype(action)>(action));
  };
  onList(QKeySequence::Delete, [this] { moveSelectedToTrash(); });
  onList(QKeySequence::Copy, [this] { model_.copySelectedArtifactToClipboard(); });

  connect(message_, &MessagePage::retryRequested, this, [this] { model_.reloadArtifacts(); });
  connect(message_, &MessagePage::discardRequested, this, &LibraryWindow::moveSelectedToTrash);
  connect(undo_, &QPushButton::clicked, this, [this] { model_.undoMoveToTrash(); });
  connect(&inspector_->copyButton(), &QPushButton::clicked, this, [this] { model_.copySelectedArtifactToClipboard(); });
  connect(&inspector_->revealButton(), &QPushButton::clicked, this, [this] { model_.revealSelectedArtifact(); });
  connect(&inspector_->trashButton(), &QPushButton::clicked, this, &LibraryWindow::moveSelectedToTrash);
}

void LibraryWindow::present() {
  if (isMinimized()) showNormal();
  show();
  raise();
  activateWindow();
}

void LibraryWindow::closeEvent(QCloseEvent* event) {
  if (!requests_.closingQuits()) {
    event->accept();
    return;
  }
  event->ignore();
  requests_.quit();
}

void LibraryWindow::update(QuilloModelChanges changes) {
  using Field = QuilloModelField;
  feed_->update(changes);
  inspector_->update(changes);
  if (changes.contains(Field::activity)) updateActivity();
  if (changes.contains(Field::undoableTrashCount) || changes.contains(Field::trashIsInProgress)) updateUndo();
  updatePages();
  const bool hasSelection = model_.state().selection.has_value();
  for (QAction* action : selectionActions_) action->setEnabled(hasSelection);
}

void LibraryWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  colorDivider();
  updateActivity();
  updatePages();
}

/// A hairline: where both panes have one colour they would run into each other.
void LibraryWindow::colorDivider() {
  QPalette line = palette();
  const QColor ground = line.color(QPalette::Window);
  const QColor text = line.color(QPalette::WindowText);
  const auto mix = [](int a, int b) { return (3 * a + b) / 4; };
  line.setColor(QPalette::Window, QColor(mix(ground.red(), text.red()), mix(ground.green(), text.green()),
                                         mix(ground.blue(), text.blue())));
  divider_->setPalette(line);
}

void LibraryWindow::updateUndo() {
  const QuilloModelState& state = model_.state();
  const bool canUndo = state.undoableTrashCount > 0 && !state.trashIsInProgress;
  const QString count = locale().toString(static_cast<qulonglong>(state.undoableTrashCount));
  const QString what =
      state.undoableTrashCount > 1 ? tr("&Undo Moving %1 Captures to Trash").arg(count) : tr("&Undo Move to Trash");
  undoAction_->setText(what);
  undoAction_->setEnabled(canUndo);
  undo_->setText(tr("&Undo"));
  undo_->setAccessibleName(QString(what).remove(QLatin1Char('&')));
  undo_->setToolTip(undo_->accessibleName());
  undo_->setVisible(canUndo);
}

void LibraryWindow::updateActivity() {
  const ActivityLine line = activityLine(model_.state().activity);
  activity_->setText(line.text);
  activity_->setToolTip(line.text);
  activitySymbol_->setPixmap(symbolIcon(line.symbol).pixmap(2 * unit));
  activitySymbol_->setAccessibleName(symbolInWords(model_.state().activity.kind));
}

void LibraryWindow::updatePages() {
  const QuilloModelState& state = model_.state();
  const bool showsArtifact = state.selection && state.selectedArtifact && !state.selectionFailure;
  pages_->setCurrentIndex(showsArtifact ? 1 : 0);
  if (!showsArtifact) message_->show(messageInstead(state));
}

void LibraryWindow::moveSelectedToTrash() {
  std::vector<UUID> ids = feed_->selectedIds();
  if (ids.empty() && model_.state().selection) ids.push_back(*model_.state().selection);
  if (!ids.empty()) model_.moveArtifactsToTrash(std::move(ids));
}

void LibraryWindow::toggleQuickLook() {
  if (!model_.state().selection) return;
  if (!quickLook_) quickLook_ = new QuickLook(thumbnails_, &feed_->list(), this);
  if (quickLook_->isVisible()) return quickLook_->hide();
  quickLook_->show(feed_->currentTitle(), feed_->currentScreenshotPath());
}

}  // namespace quillo
