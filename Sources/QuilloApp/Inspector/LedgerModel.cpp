#include "QuilloApp/Inspector/LedgerModel.h"

#include <QStringList>
#include <utility>

#include "QuilloApp/Inspector/LedgerWords.h"

namespace quillo {

void LedgerModel::setLedger(std::shared_ptr<const AccessibilityLedger> ledger) {
  if (ledger == ledger_) return;
  beginResetModel();
  ledger_ = std::move(ledger);
  endResetModel();
}

std::int32_t LedgerModel::lineOf(const QModelIndex& index) {
  return index.isValid() ? static_cast<std::int32_t>(index.internalId()) : -1;
}

QModelIndex LedgerModel::indexOf(std::int32_t line) const {
  if (!ledger_ || line < 0 || static_cast<std::size_t>(line) >= ledger_->size()) return {};
  return createIndex(ledger_->line(line).row, 0, static_cast<quintptr>(line));
}

QModelIndex LedgerModel::index(int row, int column, const QModelIndex& parent) const {
  if (!ledger_ || row < 0 || column != 0) return {};
  const auto lines = ledger_->children(lineOf(parent));
  if (static_cast<std::size_t>(row) >= lines.size()) return {};
  return createIndex(row, 0, static_cast<quintptr>(lines[static_cast<std::size_t>(row)]));
}

QModelIndex LedgerModel::parent(const QModelIndex& child) const {
  return ledger_ && child.isValid() ? indexOf(ledger_->line(lineOf(child)).parent) : QModelIndex();
}

int LedgerModel::rowCount(const QModelIndex& parent) const {
  return ledger_ ? static_cast<int>(ledger_->children(lineOf(parent)).size()) : 0;
}

int LedgerModel::columnCount(const QModelIndex& /*parent*/) const {
  return 1;
}

QVariant LedgerModel::data(const QModelIndex& index, int role) const {
  const std::int32_t number = lineOf(index);
  if (!ledger_ || number < 0) return {};
  const AccessibilityLedger::Line& line = ledger_->line(number);
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole: return ledgerLineWords(*ledger_, number);
    case roleWordRole: return roleWord(line.element->role);
    case nameRole: return shownText(ledger_->name(number));
    case valueRole: return shownText(line.value);
    case stateWordsRole: return ledgerStateWords(line);
    case isProtectedRole: return line.element->isProtected;
    case isHiddenRole:
      return line.element->visibility == InterfaceVisibility::hidden ||
             line.element->visibility == InterfaceVisibility::offscreen;
    default: return {};
  }
}

}  // namespace quillo
