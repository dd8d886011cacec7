#include "QuilloApp/Library/FeedPane.h"

#include <QAction>
#include <QDate>
#include <QEvent>
#include <QItemSelectionModel>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Translations.h"
#include "QuilloApp/Library/ArtifactDelegate.h"
#include "QuilloApp/Library/ArtifactListModel.h"
#include "QuilloApp/Library/CaptureList.h"
#include "QuilloApp/Library/ElidedLabel.h"

namespace quillo {
namespace {

constexpr int unit = 8;

QString number(const QLocale& locale, std::size_t count) {
  return locale.toString(static_cast<qulonglong>(count));
}

}  // namespace

FeedPane::FeedPane(QuilloModel& model, Thumbnails& thumbnails, QWidget* parent)
    : QWidget(parent),
      model_(model),
      rows_(new ArtifactListModel(thumbnails, this)),
      search_(new QLineEdit(this)),
      filter_(new QComboBox(this)),
      count_(new ElidedLabel(QStringLiteral("count"), this)),
      pages_(new QStackedWidget(this)),
      list_(new CaptureList(this)),
      message_(new QLabel(this)),
      showAll_(new QPushButton(tr("&Show All Captures"), this)) {
  makeControls();
  connectControls();
}

void FeedPane::makeControls() {
  search_->setObjectName(QStringLiteral("search"));
  search_->setAccessibleName(tr("Search captures"));
  search_->setPlaceholderText(tr("Search captures"));
  search_->setToolTip(tr("Searches titles, notes, applications and everything that was captured"));
  search_->setClearButtonEnabled(true);
  search_->addAction(symbolIcon("magnifyingglass"), QLineEdit::LeadingPosition)->setText(tr("Search captures"));
  // The toolkit gives its button no name.
  if (auto* clear = search_->findChild<QAction*>(QStringLiteral("_q_qlineeditclearaction")))
    clear->setText(tr("Clear search"));

  filter_->setObjectName(QStringLiteral("applicationFilter"));
  filter_->setAccessibleName(tr("Application"));
  filter_->setToolTip(tr("Shows only the captures of one application"));
  filter_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  filter_->setMinimumContentsLength(8);

  list_->setObjectName(QStringLiteral("captures"));
  list_->setAccessibleName(tr("Captures"));
  list_->setModel(rows_);
  list_->setItemDelegate(new ArtifactDelegate(list_));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFrameShape(QFrame::NoFrame);
  setMinimumWidth(30 * unit);

  makeCountQuiet();

  message_->setObjectName(QStringLiteral("feedMessage"));
  message_->setAlignment(Qt::AlignCenter);
  message_->setWordWrap(true);
  message_->setTextFormat(Qt::PlainText);
  showAll_->setObjectName(QStringLiteral("showAll"));
  auto* messagePage = new QWidget(this);
  auto* messageLayout = new QVBoxLayout(messagePage);
  messageLayout->setContentsMargins(3 * unit, 4 * unit, 3 * unit, 4 * unit);
  messageLayout->setSpacing(2 * unit);
  messageLayout->addStretch(2);
  messageLayout->addWidget(message_);
  messageLayout->addWidget(showAll_, 0, Qt::AlignCenter);
  messageLayout->addStretch(3);
  pages_->addWidget(list_);
  pages_->addWidget(messagePage);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  auto* top = new QVBoxLayout;
  top->setContentsMargins(unit, unit, unit, unit);
  top->setSpacing(unit);
  top->addWidget(search_);
  top->addWidget(filter_);
  top->addWidget(count_);
  layout->addLayout(top);
  layout->addWidget(pages_, 1);
  setTabOrder(search_, filter_);
  setTabOrder(filter_, list_);
}

void FeedPane::makeCountQuiet() {
  QPalette quiet = palette();
  quiet.setColor(QPalette::WindowText, quietTextColor(quiet, QPalette::WindowText, QPalette::Window));
  count_->setPalette(quiet);
}

void FeedPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) makeCountQuiet();
}

void FeedPane::connectControls() {
  connect(search_, &QLineEdit::textChanged, this,
          [this](const QString& text) { model_.setSearchQuery(text.toStdString()); });
  connect(search_, &QLineEdit::returnPressed, this, &FeedPane::enterList);
  auto* escape = new QShortcut(Qt::Key_Escape, search_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(escape, &QShortcut::activated, this, &FeedPane::clearSearch);
  connect(filter_, &QComboBox::activated, this, [this](int index) {
    const QVariant name = filter_->itemData(index);
    model_.setApplicationFilter(name.isValid() ? std::optional(name.toString().toStdString()) : std::nullopt);
  });
  connect(showAll_, &QPushButton::clicked, this, &FeedPane::clearSearch);
  connect(list_, &CaptureList::escaped, this, &FeedPane::clearSearch);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
    if (isUpdating_) return;
    if (const auto id = rows_->idAt(current)) model_.select(id);
    Q_EMIT currentChanged();
  });
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FeedPane::updateCount);
}

void FeedPane::update(QuilloModelChanges changes) {
  using Field = QuilloModelField;
  const auto isAnyChanged = [&](std::initializer_list<Field> fields) {
    return std::ranges::any_of(fields, [&](Field field) { return changes.contains(field); });
  };
  isUpdating_ = true;
  const bool hasNewRows = isAnyChanged({Field::artifacts, Field::libraryCondition, Field::searchQuery,
                                        Field::applicationFilter, Field::capturedTextSearch});
  if (hasNewRows) {
    updateRows();
    updateFilter();
  }
  if (hasNewRows || changes.contains(Field::selection)) updateSelection();
  if (hasNewRows || changes.contains(Field::activity)) updateMessage();
  updateCount();
  isUpdating_ = false;
}

void FeedPane::updateRows() {
  const std::vector<std::size_t> shown = model_.shownArtifacts();
  shownCount_ = shown.size();
  rows_->setRows(libraryRows(model_.state(), shown, QDate::currentDate(), locale()), locale());
}

void FeedPane::updateFilter() {
  const auto& chosen = model_.state().applicationFilter;
  std::vector<ApplicationCount> counts = model_.applicationCounts();
  // What is chosen stays to be seen when nothing of it matches.
  if (chosen && std::ranges::find(counts, *chosen, &ApplicationCount::name) == counts.end())
    counts.push_back({*chosen, 0});
  std::size_t all = 0;
  for (const ApplicationCount& each : counts) all += each.count;

  const QSignalBlocker quiet(filter_);
  const auto put = [&](int row, const QString& text, const QVariant& name) {
    if (row >= filter_->count()) filter_->addItem(QString());
    if (filter_->itemText(row) != text) filter_->setItemText(row, text);
    if (filter_->itemData(row) != name) filter_->setItemData(row, name);
  };
  put(0, tr("All applications (%1)").arg(number(locale(), all)), {});
  int row = 0;
  int chosenRow = 0;
  for (const ApplicationCount& each : counts) {
    const QString name = QString::fromStdString(each.name);
    put(++row, tr("%1 (%2)").arg(name.simplified(), number(locale(), each.count)), name);
    if (chosen == each.name) chosenRow = row;
  }
  while (filter_->count() > row + 1) filter_->removeItem(filter_->count() - 1);
  filter_->setCurrentIndex(chosenRow);
  filter_->setEnabled(!model_.state().artifacts.empty());
}

void FeedPane::updateSelection() {
  const auto& selection = model_.state().selection;
  const QModelIndex index = selection ? rows_->indexOf(*selection) : QModelIndex();
  // The current one may have been taken out of the selection by the user.
  if (list_->currentIndex() == index && (index.isValid() || !list_->selectionModel()->hasSelection())) return;
  list_->setCurrentIndex(index);
  if (index.isValid()) {
    list_->scrollTo(index);
  } else {
    list_->clearSelection();
  }
}

void FeedPane::updateCount() {
  const QuilloModelState& state = model_.state();
  const std::size_t all = state.artifacts.size();
  QString text = tr("%1 captures", nullptr, pluralNumber(all)).arg(number(locale(), all));
  if (shownCount_ != all) {
    text =
        tr("%1 of %2 captures", nullptr, pluralNumber(all)).arg(number(locale(), shownCount_), number(locale(), all));
  }
  const std::size_t damaged = state.libraryCondition.damagedBundles.size();
  if (damaged > 0 && shownCount_ == all) text = tr("%1, %2 damaged").arg(text, number(locale(), damaged));
  const std::size_t selected = selectedIds().size();
  if (selected > 1) text = tr("%1, %2 selected").arg(text, number(locale(), selected));
  if (state.capturedTextSearch.isRunning) text = tr("%1, searching captured text…").arg(text);
  // How many there are is not known.
  const bool isUnread = state.libraryCondition.listingFailure || state.activity.kind == Activity::Kind::loading;
  if (all == 0 && isUnread) text.clear();
  count_->setText(text);
}

void FeedPane::updateMessage() {
  const QuilloModelState& state = model_.state();
  const bool isNarrowed = !state.searchQuery.empty() || state.applicationFilter;
  pages_->setCurrentIndex(rows_->isEmpty() && isNarrowed ? 1 : 0);
  const QString query = QString::fromStdString(state.searchQuery).simplified();
  if (state.capturedTextSearch.isRunning) {
    message_->setText(tr("Searching captured text…"));
  } else if (query.isEmpty()) {
    message_->setText(tr("No captures of this application."));
  } else {
    message_->setText(tr("Nothing matches “%1”.").arg(query));
  }
}

std::vector<UUID> FeedPane::selectedIds() const {
  QModelIndexList indexes = list_->selectionModel()->selectedIndexes();
  std::ranges::sort(indexes, {}, &QModelIndex::row);
  std::vector<UUID> ids;
  for (const QModelIndex& index : std::as_const(indexes)) {
    if (const auto id = rows_->idAt(index)) ids.push_back(*id);
  }
  return ids;
}

QString FeedPane::currentTitle() const {
  return list_->currentIndex().data().toString();
}

QString FeedPane::currentScreenshotPath() const {
  return rows_->screenshotPathAt(list_->currentIndex());
}

void FeedPane::focusSearch() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void FeedPane::clearSearch() {
  search_->clear();
  model_.setApplicationFilter(std::nullopt);
  list_->setFocus(Qt::ShortcutFocusReason);
}

void FeedPane::enterList() {
  list_->setFocus(Qt::ShortcutFocusReason);
  if (list_->currentIndex().isValid()) return;
  // The first line is a day.
  const QModelIndex first = rows_->index(1);
  if (rows_->idAt(first)) list_->setCurrentIndex(first);
}

}  // namespace quillo
