#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "QuilloApp/Model/QuilloModel.h"
#include "QuilloApp/Setup/ShortcutButton.h"

class QGridLayout;

namespace quillo {

/// "Control + Alt + Super + C", as the keys are labelled here.
QString keyNames(const QuilloHotKey& hotKey);

/// Both shortcuts with their recorders, and one line that says what to do, what was wrong, or which one is taken.
class ShortcutRows : public QWidget {
  Q_OBJECT

 public:
  /// The model outlives the widget's use.
  explicit ShortcutRows(QuilloModel& model, QWidget* parent = nullptr);

 private:
  struct Row {
    QuilloHotKey QuilloHotKeyConfiguration::* member = nullptr;
    ShortcutButton* button = nullptr;
    QLabel* words = nullptr;  ///< the keys by their names on the keyboard
  };

  Row makeRow(QGridLayout& grid, const QString& objectName, const QString& name,
              QuilloHotKey QuilloHotKeyConfiguration::* member);
  void apply(QuilloHotKey QuilloHotKeyConfiguration::* member, const QuilloHotKey& hotKey);
  void update();

  QuilloModel& model_;
  std::array<Row, 2> rows_;
  QLabel* message_;
  bool showsFailure_ = false;  ///< of the registration that the model keeps trying
  QuilloModelObservation observation_;
};

}  // namespace quillo
