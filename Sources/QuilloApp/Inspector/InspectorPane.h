#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QWidget>
#include <memory>

#include "QuilloApp/Inspector/ArtifactReader.h"
#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {

class CoverageBanner;
class LedgerPane;
class PastePreview;
class ScreenshotPane;
class ScreenshotView;

/// The selected artifact as a folio: title, note and coverage above; the screenshot with the ledger, and the text that
/// is pasted. Shows the model's drafts and hands every keystroke to it.
class InspectorPane : public QWidget {
  Q_OBJECT

 public:
  InspectorPane(QuilloModel& model, TaskGroup& tasks, QWidget* parent = nullptr);

  void update(QuilloModelChanges changes);
  void focusTitle();

  QPushButton& copyButton() { return *copy_; }
  QPushButton& trashButton() { return *trash_; }
  QPushButton& revealButton() { return *reveal_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void makeFolio();
  QWidget* makeHead(QWidget* parent);
  QWidget* makePastePage();
  void connectParts();
  void showArtifact(const OpenArtifact& open);
  void showLine(std::int32_t line);
  void updatePreview();
  void updateSaveState();

  QuilloModel& model_;
  ArtifactReader reader_;
  std::shared_ptr<const ArtifactContents> contents_;  ///< that is shown or being read
  std::optional<ArtifactRect> windowFrame_;

  QLineEdit* title_;
  QLabel* source_;
  CoverageBanner* coverage_;
  QPlainTextEdit* note_;
  QTabWidget* pages_;
  QSplitter* window_;
  ScreenshotPane* screenshot_;
  ScreenshotView* picture_;
  LedgerPane* ledger_;
  PastePreview* preview_;
  QLabel* previewSize_;
  QLabel* saveState_;
  QPushButton* copy_;
  QPushButton* reveal_;
  QPushButton* trash_;
};

}  // namespace quillo
