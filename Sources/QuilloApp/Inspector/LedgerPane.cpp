#include "QuilloApp/Inspector/LedgerPane.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "QuilloApp/Inspector/FolioLayout.h"
#include "QuilloApp/Inspector/LedgerDelegate.h"
#include "QuilloApp/Inspector/LedgerModel.h"
#include "QuilloApp/Interface/QuietLabel.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Translations.h"

namespace quillo {

LedgerPane::LedgerPane(QWidget* parent)
    : QWidget(parent),
      model_(new LedgerModel(this)),
      delegate_(new LedgerDelegate(this)),
      search_(new QLineEdit(this)),
      count_(new QuietLabel(QStringLiteral("ledgerMatches"), this)),
      previous_(
          folio::makeToolButton(this, QStringLiteral("previousMatch"), QStringLiteral("▲"), tr("Previous match"))),
      next_(folio::makeToolButton(this, QStringLiteral("nextMatch"), QStringLiteral("▼"), tr("Next match"))),
      tree_(new QTreeView(this)),
      message_(new QuietLabel(QStringLiteral("ledgerMessage"), this)) {
  makeSearch();
  makeTree();
  message_->setAlignment(Qt::AlignCenter);
  message_->setWordWrap(true);
  message_->hide();

  auto* bar = new QHBoxLayout;
  bar->setSpacing(folio::unit / 2);
  bar->addWidget(folio::makeHeading(tree_, tr("&Ledger")));
  bar->addSpacing(folio::unit);
  bar->addWidget(search_, 1);
  for (QWidget* each : std::initializer_list<QWidget*>{count_, previous_, next_}) bar->addWidget(each);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(folio::unit / 2);
  layout->addLayout(bar);
  layout->addWidget(tree_, 1);
  layout->addWidget(message_, 1);
  updateCount();
}

void LedgerPane::makeSearch() {
  search_->setObjectName(QStringLiteral("ledgerSearch"));
  search_->setAccessibleName(tr("Find in the ledger"));
  search_->setPlaceholderText(tr("Find in the ledger"));
  search_->setClearButtonEnabled(true);
  search_->setMinimumWidth(12 * folio::unit);
  search_->addAction(symbolIcon("magnifyingglass"), QLineEdit::LeadingPosition)->setText(tr("Find in the ledger"));
  search_->installEventFilter(this);
  connect(search_, &QLineEdit::textChanged, this, &LedgerPane::search);
  connect(previous_, &QToolButton::clicked, this, [this] { goToMatch(-1); });
  connect(next_, &QToolButton::clicked, this, [this] { goToMatch(1); });
  const auto add = [this](const QString& text, const QKeySequence& keys, auto&& action) {
    auto* made = new QAction(text, this);
    made->setShortcut(keys);
    made->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(made, &QAction::triggered, this, std::forward<decltype(action)>(action));
    addAction(made);
  };
  add(tr("Next match"), QKeySequence(Qt::Key_F3), [this] { goToMatch(1); });
  add(tr("Previous match"), QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { goToMatch(-1); });
}

void LedgerPane::makeTree() {
  tree_->setObjectName(QStringLiteral("ledger"));
  tree_->setAccessibleName(tr("Ledger of the captured window"));
  tree_->setModel(model_);
  tree_->setItemDelegate(delegate_);
  tree_->setHeaderHidden(true);
  tree_->setUniformRowHeights(true);
  tree_->setIndentation(2 * folio::unit);
  tree_->setMouseTracking(true);
  tree_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  tree_->setContextMenuPolicy(Qt::ActionsContextMenu);
  tree_->viewport()->installEventFilter(this);
  connect(tree_, &QTreeView::entered, this,
          [this](const QModelIndex& index) { Q_EMIT linePointed(LedgerModel::lineOf(index)); });
  connect(tree_, &QTreeView::viewportEntered, this, [this] { Q_EMIT linePointed(-1); });
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
    updateCount();
    Q_EMIT lineSelected(LedgerModel::lineOf(current));
  });
  const auto add = [this](const QString& text, const QKeySequence& keys, auto&& action) {
    auto* made = new QAction(text, tree_);
    made->setShortcut(keys);
    made->setShortcutContext(Qt::WidgetShortcut);
    connect(made, &QAction::triggered, this, std::forward<decltype(action)>(action));
    tree_->addAction(made);
  };
  add(tr("&Copy Text"), QKeySequence::Copy, [this] { copyText(); });
  add(tr("Copy Line and All &Below"), QKeySequence(Qt::CTRL | Qt::Key_B), [this] { copyBranch(); });
  add(tr("&Expand All"), QKeySequence(Qt::CTRL | Qt::Key_Right), [this] { tree_->expandAll(); });
  add(tr("C&ollapse All"), QKeySequence(Qt::CTRL | Qt::Key_Left), [this] { tree_->collapseAll(); });
}

void LedgerPane::setLedger(std::shared_ptr<const AccessibilityLedger> ledger, const QString& message) {
  const bool hasLines = ledger != nullptr && ledger->size() > 0;
  delegate_->setPointed(-1);
  model_->setLedger(std::move(ledger));
  if (hasLines) tree_->expandAll();
  tree_->setVisible(hasLines);
  message_->setText(message);
  message_->setVisible(!hasLines);
  search_->setEnabled(hasLines);
  matches_.clear();
  if (hasLines && !search_->text().isEmpty()) matches_ = model_->ledger()->linesMatching(search_->text().toStdString());
  updateCount();
}

const AccessibilityLedger* LedgerPane::ledger() const {
  return model_->ledger();
}

void LedgerPane::selectLine(std::int32_t line) {
  const QModelIndex index = model_->indexOf(line);
  tree_->setCurrentIndex(index);
  if (index.isValid()) tree_->scrollTo(index);
}

std::int32_t LedgerPane::selectedLine() const {
  return LedgerModel::lineOf(tree_->currentIndex());
}

void LedgerPane::setPointed(std::int32_t line) {
  // Below a branch that was closed, the branch stands for all that is in it.
  QModelIndex shown = model_->indexOf(line);
  for (QModelIndex above = shown.parent(); above.isValid(); above = above.parent()) {
    if (!tree_->isExpanded(above)) shown = above;
  }
  delegate_->setPointed(LedgerModel::lineOf(shown));
  if (shown.isValid()) tree_->scrollTo(shown);
  tree_->viewport()->update();
}

bool LedgerPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tree_->viewport() && event->type() == QEvent::Leave) Q_EMIT linePointed(-1);
  if (watched == search_ && event->type() == QEvent::KeyPress) {
    const auto* pressed = static_cast<QKeyEvent*>(event);
    switch (pressed->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter: goToMatch(pressed->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1); return true;
      case Qt::Key_Down: tree_->setFocus(Qt::TabFocusReason); return true;
      case Qt::Key_Escape:
        if (search_->text().isEmpty()) break;
        search_->clear();
        return true;
      default: break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void LedgerPane::search() {
  matches_.clear();
  if (model_->ledger() != nullptr) matches_ = model_->ledger()->linesMatching(search_->text().toStdString());
  // What is typed stays with the line where the search began, as long as that one matches.
  if (!std::ranges::binary_search(matches_, selectedLine())) goToMatch(1);
  updateCount();
}

void LedgerPane::goToMatch(int direction) {
  if (matches_.empty()) return;
  const std::int32_t current = selectedLine();
  if (direction > 0) {
    const auto next = std::ranges::upper_bound(matches_, current);
    selectLine(next == matches_.end() ? matches_.front() : *next);
  } else {
    const auto next = std::ranges::lower_bound(matches_, current);
    selectLine(next == matches_.begin() ? matches_.back() : *std::prev(next));
  }
}

void LedgerPane::updateCount() {
  const bool isSearching = !search_->text().trimmed().isEmpty() && model_->ledger() != nullptr;
  count_->setVisible(isSearching);
  for (QToolButton* each : {previous_, next_}) {
    each->setVisible(isSearching);
    each->setEnabled(!matches_.empty());
  }
  if (!isSearching) return;
  const QLocale locale;
  const QString all = locale.toString(static_cast<qulonglong>(matches_.size()));
  const auto found = std::ranges::lower_bound(matches_, selectedLine());
  if (matches_.empty()) {
    count_->setText(tr("No match"));
  } else if (found != matches_.end() && *found == selectedLine()) {
    count_->setText(tr("%1 of %2").arg(locale.toString(static_cast<qlonglong>(found - matches_.begin()) + 1), all));
  } else {
    count_->setText(tr("%1 matches", nullptr, pluralNumber(matches_.size())).arg(all));
  }
}

void LedgerPane::copyText() const {
  const std::int32_t line = selectedLine();
  if (line < 0) return;
  std::string text = ledger()->text(line);
  if (text.empty()) text = ledgerLineText(*ledger()->line(line).element, ledger()->line(line).value);
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void LedgerPane::copyBranch() const {
  if (const std::int32_t line = selectedLine(); line >= 0)
    QGuiApplication::clipboard()->setText(QString::fromStdString(ledger()->branchText(line)));
}

}  // namespace quillo
