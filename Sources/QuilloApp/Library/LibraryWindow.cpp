#include "QuilloApp/Library/LibraryWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDate>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>
#include <utility>

#include "QuilloApp/Inspector/InspectorPane.h"
#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Library/ArtifactDelegate.h"
#include "QuilloApp/Library/ArtifactListModel.h"

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
    case Activity::Kind::success: return {"checkmark.circle", QString::fromStdString(activity.message)};
    case Activity::Kind::failure: return {"exclamationmark.triangle", QString::fromStdString(activity.message)};
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
      requests_(std::move(requests)),
      rows_(new ArtifactListModel(thumbnails, this)),
      search_(new QLineEdit(this)),
      list_(new QListView(this)),
      count_(new QLabel(this)),
      pages_(new QStackedWidget(this)),
      emptySymbol_(centredLabel(this, "emptySymbol")),
      emptyTitle_(centredLabel(this, "emptyTitle")),
      emptyText_(centredLabel(this, "emptyText")),
      inspector_(new InspectorPane(model, thumbnails, this)),
      activitySymbol_(new QLabel(this)),
      activity_(new QLabel(this)) {
  setObjectName(QStringLiteral("library"));
  setWindowTitle(tr("Quillo"));
  setWindowIcon(applicationIcon());
  resize(1120, 760);
  setMinimumSize(720, 480);

  inspector_->setObjectName(QStringLiteral("inspector"));
  pages_->addWidget(makeEmptyPage());
  pages_->addWidget(inspector_);
  auto* panes = new QSplitter(this);
  panes->setObjectName(QStringLiteral("panes"));
  panes->setChildrenCollapsible(false);
  panes->setHandleWidth(1);
  panes->addWidget(makeFeed());
  panes->addWidget(pages_);
  panes->setStretchFactor(1, 1);
  panes->setSizes({336, 784});
  setCentralWidget(panes);

  activity_->setObjectName(QStringLiteral("activity"));
  activity_->setTextFormat(Qt::PlainText);
  statusBar()->setSizeGripEnabled(false);
  statusBar()->setContentsMargins(unit, 0, unit, 0);
  statusBar()->addWidget(activitySymbol_);
  statusBar()->addWidget(activity_, 1);

  makeMenus();
  connectControls();
  observation_ = model_.observe([this](QuilloModelChanges changes) { update(changes); });
  update(QuilloModelChanges::everything());
  list_->setFocus();
}

LibraryWindow::~LibraryWindow() = default;

QWidget* LibraryWindow::makeFeed() {
  search_->setObjectName(QStringLiteral("search"));
  search_->setAccessibleName(tr("Search captures"));
  search_->setPlaceholderText(tr("Search captures"));
  search_->setClearButtonEnabled(true);
  search_->addAction(symbolIcon("magnifyingglass"), QLineEdit::LeadingPosition);

  list_->setObjectName(QStringLiteral("captures"));
  list_->setAccessibleName(tr("Captures"));
  list_->setModel(rows_);
  list_->setItemDelegate(new ArtifactDelegate(list_));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFrameShape(QFrame::NoFrame);
  list_->setMinimumWidth(30 * unit);

  count_->setObjectName(QStringLiteral("count"));
  QPalette quiet = count_->palette();
  quiet.setColor(QPalette::WindowText, quietTextColor(quiet, QPalette::WindowText, QPalette::Window));
  count_->setPalette(quiet);

  auto* feed = new QWidget(this);
  auto* layout = new QVBoxLayout(feed);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  auto* top = new QVBoxLayout;
  top->setContentsMargins(unit, unit, unit, unit);
  top->setSpacing(unit / 2);
  top->addWidget(search_);
  top->addWidget(count_);
  layout->addLayout(top);
  layout->addWidget(list_, 1);
  return feed;
}

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
  layout->addStretch(3);
  return page;
}

void LibraryWindow::makeMenus() {
  QMenu* capture = menuBar()->addMenu(tr("C&apture"));
  const auto add = [&](const char* symbol, const QString& text, const QKeySequence& keys, auto&& action) {
    QAction* item = capture->addAction(symbolIcon(symbol), text, keys, this, std::forward<decltype(action)>(action));
    item->setObjectName(text);
    return item;
  };
  selectionActions_ = {
      add("doc.on.doc", tr("&Copy Selected Capture"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C),
          [this] { model_.copySelectedArtifactToClipboard(); }),
      add("keyboard", tr("&Rename"), QKeySequence(Qt::Key_F2), [this] { inspector_->focusTitle(); }),
      add("folder", tr("Show &Files"), {}, [this] { model_.revealSelectedArtifact(); }),
      add("trash", tr("Move to &Trash"), QKeySequence(Qt::CTRL | Qt::Key_Delete), [this] { moveSelectedToTrash(); })};
  capture->addSeparator();
  add("magnifyingglass", tr("&Find"), QKeySequence::Find, [this] {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
  });
  add("arrow.clockwise", tr("Re&load"), QKeySequence::Refresh, [this] { model_.reloadArtifacts(); });
  capture->addSeparator();
  add("checklist", tr("&Setup && Shortcuts…"), {}, [this] { requests_.openSetup(); });
  add("rectangle.stack", tr("C&lose"), QKeySequence::Close, [this] { close(); });
  add("power", tr("&Quit Quillo"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { requests_.quit(); });
}

void LibraryWindow::connectControls() {
  connect(search_, &QLineEdit::textEdited, this,
          [this](const QString& text) { model_.setSearchQuery(text.toStdString()); });
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text.isEmpty()) model_.setSearchQuery({});
  });
  connect(search_, &QLineEdit::returnPressed, this, [this] { list_->setFocus(Qt::ShortcutFocusReason); });
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
    if (isUpdating_) return;
    if (const auto id = rows_->idAt(current)) model_.select(id);
  });
  connect(list_, &QListView::activated, this, [this] { inspector_->focusTitle(); });

  // In the list a single key suffices; in a field it edits the text.
  const auto onList = [this](const QKeySequence& keys, auto&& action) {
    auto* shortcut = new QShortcut(keys, list_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, std::forward<decltype(action)>(action));
  };
  onList(QKeySequence::Delete, [this] { moveSelectedToTrash(); });
  onList(QKeySequence::Copy, [this] { model_.copySelectedArtifactToClipboard(); });

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
  isUpdating_ = true;
  if (changes.contains(Field::artifacts) || changes.contains(Field::searchQuery)) updateRows();
  if (changes.contains(Field::artifacts) || changes.contains(Field::selection) || changes.contains(Field::searchQuery))
    updateSelection();
  inspector_->update(changes);
  if (changes.contains(Field::activity)) updateActivity();
  updatePages();
  const bool hasSelection = model_.state().selection.has_value();
  for (QAction* action : selectionActions_) action->setEnabled(hasSelection);
  isUpdating_ = false;
}

void LibraryWindow::updateRows() {
  const std::vector<StoredArtifact> found = model_.filteredArtifacts();
  rows_->setRows(libraryRows(found, QDate::currentDate(), locale()));
  const std::size_t all = model_.state().artifacts.size();
  const QString number = locale().toString(static_cast<qulonglong>(all));
  if (found.size() != all)
    count_->setText(tr("%1 of %2 captures").arg(locale().toString(static_cast<qulonglong>(found.size())), number));
  else
    count_->setText(all == 1 ? tr("1 capture") : tr("%1 captures").arg(number));
}

void LibraryWindow::updateSelection() {
  const auto& selection = model_.state().selection;
  const QModelIndex index = selection ? rows_->indexOf(*selection) : QModelIndex();
  if (list_->currentIndex() == index && list_->selectionModel()->isSelected(index)) return;
  list_->setCurrentIndex(index);
  if (index.isValid()) list_->scrollTo(index);
}

void LibraryWindow::updateActivity() {
  const ActivityLine line = activityLine(model_.state().activity);
  activity_->setText(line.text);
  activity_->setToolTip(line.text);
  activitySymbol_->setPixmap(symbolIcon(line.symbol).pixmap(2 * unit));
}

void LibraryWindow::updatePages() {
  const QuilloModelState& state = model_.state();
  const bool showsArtifact = state.selection.has_value() && state.selectedArtifact.has_value();
  pages_->setCurrentIndex(showsArtifact ? 1 : 0);
  if (showsArtifact) return;
  if (state.activity.kind == Activity::Kind::loading) {
    emptyTitle_->setText(tr("Loading artifacts…"));
    emptyText_->clear();
  } else if (state.artifacts.empty()) {
    emptyTitle_->setText(tr("No captures yet"));
    emptyText_->setText(tr("Bring a window to the front and press %1. Its pixels and its text appear here.")
                            .arg(QString::fromStdString(state.hotKeyConfiguration.capture.displayString())));
  } else {
    emptyTitle_->setText(tr("Nothing selected"));
    emptyText_->setText(tr("Choose a capture to read, correct, copy or paste it."));
  }
}

void LibraryWindow::moveSelectedToTrash() {
  std::vector<UUID> ids;
  for (const QModelIndex& index : list_->selectionModel()->selectedIndexes()) {
    if (const auto id = rows_->idAt(index)) ids.push_back(*id);
  }
  if (ids.empty() && model_.state().selection) ids.push_back(*model_.state().selection);
  if (!ids.empty()) model_.moveArtifactsToTrash(std::move(ids));
}

}  // namespace quillo
