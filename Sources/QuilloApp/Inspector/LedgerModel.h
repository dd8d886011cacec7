#pragma once

#include <QAbstractItemModel>
#include <memory>

#include "QuilloApp/Inspector/AccessibilityLedger.h"

namespace quillo {

/// A ledger for the toolkit's views. An index carries its line's number.
class LedgerModel : public QAbstractItemModel {
 public:
  enum Role : int {
    roleWordRole = Qt::UserRole,
    nameRole,
    valueRole,
    stateWordsRole,  ///< QStringList
    isProtectedRole,
    isHiddenRole,  ///< hidden or scrolled out of sight
  };

  using QAbstractItemModel::QAbstractItemModel;

  /// Null for none.
  void setLedger(std::shared_ptr<const AccessibilityLedger> ledger);
  const AccessibilityLedger* ledger() const { return ledger_.get(); }

  /// -1 for an invalid index.
  static std::int32_t lineOf(const QModelIndex& index);
  QModelIndex indexOf(std::int32_t line) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  std::shared_ptr<const AccessibilityLedger> ledger_;
};

}  // namespace quillo
