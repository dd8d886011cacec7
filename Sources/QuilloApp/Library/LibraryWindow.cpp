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
#include <QVBoxLayout>
#include <utility>

#include "QuilloApp/Inspector/InspectorPane.h"
#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloApp/Library/CaptureList.h"
#include "QuilloApp/Library/FeedPane.h"
#include "QuilloApp/Library/QuickLook.h"

namespace quillo {
namespace {

constexpr int unit = 8;

struct ActivityLine {
  std::string_view symbol;
  QString text;
};

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

QLabel* centredLabel(QWidget* parent, const char* objectName) {
  auto* label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(objectName));
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  return label;
}

}  // namespace

LibraryWindow::LibraryWindow(QuilloModel& model, Thumbnails& thumbnails, Requests requests)
    : model_(model),
      thumbnails_(thumbnails),
      requests_(std::move(requests)),
      feed_(new FeedPane(model, thumbnails, this)),
      pages_(new QStackedWidget(this)),
      emptySymbol_(centredLabel(this, "emptySymbol")),
      emptyTitle_(centredLabel(this, "emptyTitle")),
      emptyText_(centredLabel(this, "emptyText")),
      retry_(new QPushButton(tr("&Try Again"), this)),
      discard_(new QPushButton(symbolIcon("trash"), tr("Move to &Trash"), this)),
      inspector_(new InspectorPane(model, thumbnails.tasks(), this)),
      activitySymbol_(new QLabel(this)),
      activity_(new QLabel(this)),
      undo_(new QPushButton(symbolIcon("arrow.counterclockwise"), QString(), this)) {
  setObjectName(QStringLiteral("library"));
  setWindowTitle(tr("Quillo"));
  setWindowIcon(applicationIcon());
  resize(1120, 760);
  setMinimumSize(720, 480);

  feed_->setObjectName(QStringLiteral("feed"));
  inspector_->setObjectName(QStringLiteral("inspector"));
  pages_->addWidget(makeEmptyPage());
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
  setCentralWidget(panes);

  activity_->setObjectName(QStringLiteral("activity"));
  activity_->setTextFormat(Qt::PlainText);
  activity_->setAccessibleName(tr("Activity"));
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

QWidget* LibraryWindow::makeEmptyPage() {
  auto* page = new QWidget(this);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  large.setBold(true);
  emptyTitle_->setFont(large);
  emptySymbol_->setPixmap(applicationIcon().pixmap(8 * unit));
  emptySymbol_->setAccessibleName(tr("Quillo"));
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(6 * unit, 4 * unit, 6 * unit, 4 * unit);
  layout->setSpacing(2 * unit);
  layout->addStretch(2);
  for (QLabel* label : {emptySymbol_, emptyTitle_, emptyText_}) layout->addWidget(label);
  emptyText_->setTextFormat(Qt::PlainText);
  retry_->setObjectName(QStringLiteral("retry"));
  discard_->setObjectName(QStringLiteral("discard"));
  for (QPushButton* button : {retry_, discard_}) layout->addWidget(button, 0, Qt::AlignCenter);
  layout->addStretch(3);
  return page;
}

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

  connect(retry_, &QPushButton::clicked, this, [this] { model_.reloadArtifacts(); });
  connect(discard_, &QPushButton::clicked, this, &LibraryWindow::moveSelectedToTrash);
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
  updateActivity();
  updatePages();
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
}

void LibraryWindow::updatePages() {
  const QuilloModelState& state = model_.state();
  const bool showsArtifact = state.selection && state.selectedArtifact && !state.selectionFailure;
  pages_->setCurrentIndex(showsArtifact ? 1 : 0);
  if (showsArtifact) return;
  const auto& failure = state.libraryCondition.listingFailure;
  retry_->setVisible(failure.has_value());
  discard_->setVisible(!failure && state.selectionFailure);
  const bool isTrouble = failure || state.selectionFailure;
  emptySymbol_->setPixmap((isTrouble ? symbolIcon("exclamationmark.triangle") : applicationIcon()).pixmap(8 * unit));
  emptySymbol_->setAccessibleName(isTrouble ? tr("Problem") : tr("Quillo"));
  if (failure) {
    emptyTitle_->setText(tr("The library cannot be read"));
    emptyText_->setText(messageText(*failure));
  } else if (state.selectionFailure) {
    emptyTitle_->setText(tr("This capture cannot be opened"));
    emptyText_->setText(messageText(*state.selectionFailure));
  } else if (state.activity.kind == Activity::Kind::loading) {
    emptyTitle_->setText(tr("Loading artifacts…"));
    emptyText_->clear();
  } else if (state.artifacts.empty() && state.libraryCondition.damagedBundles.empty()) {
    emptyTitle_->setText(tr("No captures yet"));
    emptyText_->setText(tr("Bring a window to the front and press %1. Its pixels and its text appear here.")
                            .arg(QString::fromStdString(state.hotKeyConfiguration.capture.displayString())));
  } else {
    emptyTitle_->setText(tr("Nothing selected"));
    emptyText_->setText(tr("Choose a capture to read, correct, copy or paste it."));
  }
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
