#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QTreeView>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <vector>

#include "QuilloApp/Inspector/AccessibilityLedger.h"

namespace quillo {

class LedgerDelegate;
class LedgerModel;

/// The ledger as a tree with a search. Lines are told by number; -1 is none.
class LedgerPane : public QWidget {
  Q_OBJECT

 public:
  explicit LedgerPane(QWidget* parent = nullptr);

  /// Null while there is none; `message` says why.
  void setLedger(std::shared_ptr<const AccessibilityLedger> ledger, const QString& message = {});
  const AccessibilityLedger* ledger() const;

  void selectLine(std::int32_t line);
  std::int32_t selectedLine() const;
  /// Marks the line that the pointer is at elsewhere, where it can be seen.
  void setPointed(std::int32_t line);

 Q_SIGNALS:
  void lineSelected(std::int32_t line);
  void linePointed(std::int32_t line);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeSearch();
  void makeTree();
  void search();
  void goToMatch(int direction);
  void updateCount();
  void copyText() const;
  void copyBranch() const;

  LedgerModel* model_;
  LedgerDelegate* delegate_;
  QLineEdit* search_;
  QLabel* count_;
  QToolButton* previous_;
  QToolButton* next_;
  QTreeView* tree_;
  QLabel* message_;
  std::vector<std::int32_t> matches_;
};

}  // namespace quillo
