#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QWidget>

namespace quillo {

struct CoverageSummary;

/// How much of the window the capture holds: a line, and what it leaves out on request.
class CoverageBanner : public QWidget {
  Q_OBJECT

 public:
  explicit CoverageBanner(QWidget* parent = nullptr);

  void setSummary(const CoverageSummary& summary);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void drawSymbol();

  bool isPartial_ = false;
  QLabel* symbol_;
  QLabel* headline_;
  QToolButton* more_;
  QPlainTextEdit* details_;
};

}  // namespace quillo
