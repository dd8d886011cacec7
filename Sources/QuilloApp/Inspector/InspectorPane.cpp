#include "QuilloApp/Inspector/InspectorPane.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLocale>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <chrono>
#include <initializer_list>
#include <utility>

#include "QuilloApp/Inspector/CoverageBanner.h"
#include "QuilloApp/Inspector/CoverageSummary.h"
#include "QuilloApp/Inspector/FolioLayout.h"
#include "QuilloApp/Inspector/LedgerPane.h"
#include "QuilloApp/Inspector/LedgerWords.h"
#include "QuilloApp/Inspector/PastePreview.h"
#include "QuilloApp/Inspector/ScreenshotPane.h"
#include "QuilloApp/Inspector/ScreenshotView.h"
#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/QuietLabel.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"

namespace quillo {
namespace {

using folio::unit;

constexpr int widthForTwoColumns = 64 * unit;

QString whenCaptured(Date date, const QLocale& locale) {
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(date.time_since_epoch()).count();
  return locale.toString(QDateTime::fromMSecsSinceEpoch(milliseconds), QLocale::ShortFormat);
}

/// Replaces the text only when it differs, so that the caret stays while one types.
void setDraft(QPlainTextEdit& field, const QString& text) {
  if (field.toPlainText() != text) field.setPlainText(text);
}

/// Where the window stood: what is known of it, else the outermost element that has a place.
std::optional<ArtifactRect> windowFrame(const OpenArtifact& open) {
  if (const auto& frame = open.stored.manifest.source.windowFrame) return frame;
  for (const InterfaceElement& element : open.contents->interfaceObservation.elements) {
    if (element.role == InterfaceSemanticRole::window && element.bounds) return element.bounds;
  }
  return std::nullopt;
}

}  // namespace

InspectorPane::InspectorPane(QuilloModel& model, TaskGroup& tasks, QWidget* parent)
    : QWidget(parent), model_(model), reader_(tasks) {
  makeFolio();
  connectParts();
  QWidget* former = title_;
  for (QWidget* next : std::initializer_list<QWidget*>{note_, pages_, picture_, copy_, reveal_, trash_})
    setTabOrder(std::exchange(former, next), next);
  update(QuilloModelChanges::everything());
}

void InspectorPane::makeFolio() {
  window_ = new QSplitter(Qt::Horizontal, this);
  window_->setObjectName(QStringLiteral("windowParts"));
  window_->setChildrenCollapsible(false);
  window_->setHandleWidth(unit);
  window_->setContentsMargins(0, unit, 0, 0);
  screenshot_ = new ScreenshotPane(window_);
  picture_ = &screenshot_->view();
  ledger_ = new LedgerPane(window_);
  ledger_->setObjectName(QStringLiteral("ledgerPane"));
  window_->addWidget(screenshot_);
  window_->addWidget(ledger_);
  window_->setSizes({1000, 1000});
  pages_ = new QTabWidget(this);
  pages_->setObjectName(QStringLiteral("pages"));
  pages_->setAccessibleName(tr("What was captured"));
  pages_->setDocumentMode(true);
  pages_->addTab(window_, tr("Captured &window"));
  pages_->addTab(makePastePage(), tr("What is &pasted"));

  auto* parts = new QSplitter(Qt::Vertical, this);
  parts->setObjectName(QStringLiteral("inspectorParts"));
  parts->setChildrenCollapsible(false);
  parts->setHandleWidth(unit);
  parts->addWidget(makeHead(parts));
  parts->addWidget(pages_);
  parts->setStretchFactor(1, 1);
  parts->setSizes({1, 1000});  // the note begins with a few lines; whoever writes more pulls it open

  saveState_ = new QuietLabel(QStringLiteral("saveState"), this);
  saveState_->setAccessibleName(tr("Whether changes are saved"));
  saveState_->setWordWrap(true);
  copy_ = folio::makeButton(this, QStringLiteral("copy"), tr("&Copy"), "doc.on.doc");
  reveal_ = folio::makeButton(this, QStringLiteral("reveal"), tr("Show &Files"), "folder");
  trash_ = folio::makeButton(this, QStringLiteral("trash"), tr("Move to &Trash"), "trash");
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(unit);
  buttons->addWidget(saveState_, 1);
  for (QPushButton* each : {copy_, reveal_, trash_}) buttons->addWidget(each);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, unit);
  layout->setSpacing(unit);
  layout->addWidget(parts, 1);
  layout->addLayout(buttons);
}

QWidget* InspectorPane::makeHead(QWidget* parent) {
  auto* head = new QWidget(parent);
  title_ = new QLineEdit(head);
  title_->setObjectName(QStringLiteral("title"));
  title_->setAccessibleName(tr("Title"));
  title_->setPlaceholderText(tr("Title"));
  QFont large = title_->font();
  large.setPointSizeF(large.pointSizeF() * 1.3);
  large.setBold(true);
  title_->setFont(large);
  source_ = new QuietLabel(QStringLiteral("source"), head);
  source_->setWordWrap(true);
  coverage_ = new CoverageBanner(head);
  note_ = new QPlainTextEdit(head);
  note_->setObjectName(QStringLiteral("annotations"));
  note_->setAccessibleName(tr("Intent and corrections"));
  note_->setPlaceholderText(tr("What is this capture for? What did Quillo get wrong?"));
  note_->setTabChangesFocus(true);
  note_->setMinimumHeight(7 * unit);

  auto* titleLine = new QHBoxLayout;
  titleLine->setSpacing(unit);
  titleLine->addWidget(folio::makeHeading(title_, tr("T&itle")));
  titleLine->addWidget(title_, 1);
  auto* layout = new QVBoxLayout(head);
  layout->setContentsMargins(0, 0, 0, unit / 2);
  layout->setSpacing(unit / 2);
  layout->addLayout(titleLine);
  layout->addWidget(source_);
  layout->addWidget(coverage_);
  layout->addWidget(folio::makeHeading(note_, tr("Intent and c&orrections")));
  layout->addWidget(note_, 1);
  return head;
}

QWidget* InspectorPane::makePastePage() {
  auto* page = new QWidget(pages_);
  preview_ = new PastePreview(page);
  preview_->setObjectName(QStringLiteral("pastePreview"));
  preview_->setAccessibleName(tr("Paste preview"));
  previewSize_ = new QuietLabel(QStringLiteral("previewSize"), page);
  previewSize_->setWordWrap(true);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, unit, 0, 0);
  layout->setSpacing(unit / 2);
  layout->addWidget(previewSize_);
  layout->addWidget(preview_, 1);
  return page;
}

void InspectorPane::connectParts() {
  connect(title_, &QLineEdit::textEdited, this,
          [this](const QString& text) { model_.setDraftTitle(text.toStdString()); });
  connect(note_, &QPlainTextEdit::textChanged, this, [this] {
    const std::string text = note_->toPlainText().toStdString();
    if (text != model_.state().draftAnnotations) model_.setDraftAnnotations(text);
  });
  connect(&reader_, &ArtifactReader::ledgerRead, this, [this](std::shared_ptr<const AccessibilityLedger> read) {
    ledger_->setLedger(std::move(read), tr("Nothing of the window's text was captured."));
  });
  connect(&reader_, &ArtifactReader::pictureRead, this, [this](const std::shared_ptr<const CapturedPicture>& read) {
    if (!read) return picture_->showMessage(tr("The screenshot cannot be read."));
    picture_->setPicture(read, windowFrame_ ? PicturePlace(*windowFrame_, read->size()) : PicturePlace());
    showLine(ledger_->selectedLine());
  });
  connect(ledger_, &LedgerPane::lineSelected, this, &InspectorPane::showLine);
  connect(ledger_, &LedgerPane::linePointed, this, [this](std::int32_t line) {
    picture_->setPointed(line < 0 ? std::nullopt : ledger_->ledger()->line(line).frame);
  });
  const auto lineAt = [this](const ArtifactPoint& point) {
    return ledger_->ledger() != nullptr ? ledger_->ledger()->lineAt(point) : std::nullopt;
  };
  connect(picture_, &ScreenshotView::clicked, this, [this, lineAt](const ArtifactPoint& point) {
    if (const auto line = lineAt(point)) ledger_->selectLine(*line);
  });
  connect(picture_, &ScreenshotView::pointedAt, this, [this, lineAt](const ArtifactPoint& point) {
    const auto line = lineAt(point);
    picture_->setPointed(line ? ledger_->ledger()->line(*line).frame : std::nullopt);
    ledger_->setPointed(line.value_or(-1));
  });
  connect(picture_, &ScreenshotView::pointingEnded, this, [this] {
    picture_->setPointed(std::nullopt);
    ledger_->setPointed(-1);
  });
}

void InspectorPane::update(QuilloModelChanges changes) {
  using Field = QuilloModelField;
  const QuilloModelState& state = model_.state();
  if (changes.contains(Field::selectedArtifact)) {
    if (state.selectedArtifact) {
      showArtifact(*state.selectedArtifact);
    } else {
      reader_.cancel();
      contents_.reset();
      ledger_->setLedger(nullptr);
      picture_->showMessage({});
    }
  }
  const QString title = QString::fromStdString(state.draftTitle);
  if (title_->text() != title) title_->setText(title);
  // While another capture is being loaded the fields still show the former one, which nobody means to edit.
  const bool isLoaded = state.selectedArtifact && state.selection == state.selectedArtifact->id();
  if (isLoaded && title_->isReadOnly() && title_->hasFocus()) title_->selectAll();
  title_->setReadOnly(!isLoaded);
  note_->setReadOnly(!isLoaded);
  if (changes.contains(Field::draftAnnotations)) setDraft(*note_, QString::fromStdString(state.draftAnnotations));
  if (changes.contains(Field::selectedArtifact) || changes.contains(Field::draftTitle) ||
      changes.contains(Field::draftAnnotations))
    updatePreview();
  updateSaveState();
  trash_->setEnabled(!state.trashIsInProgress);
}

void InspectorPane::focusTitle() {
  title_->setFocus(Qt::ShortcutFocusReason);
  title_->selectAll();
}

void InspectorPane::showArtifact(const OpenArtifact& open) {
  // An edit replaces the manifest alone: what was read stays, and so does the selected line.
  if (open.contents == contents_) return;
  contents_ = open.contents;
  windowFrame_ = windowFrame(open);
  const ArtifactManifest& manifest = open.stored.manifest;
  const QLocale locale;
  source_->setText(tr("%1  ·  %2")
                       .arg(QString::fromStdString(manifest.source.applicationName).simplified(),
                            whenCaptured(manifest.createdAt, locale)));
  coverage_->setSummary(describeCoverage(contents_->interfaceObservation, locale));
  ledger_->setLedger(nullptr, tr("Reading the captured context…"));
  picture_->showMessage(tr("Reading the screenshot…"));
  reader_.read(contents_);
}

void InspectorPane::showLine(std::int32_t line) {
  if (line < 0 || ledger_->ledger() == nullptr) return picture_->setLit({}, {});
  picture_->setLit(ledger_->ledger()->line(line).frame, ledgerLineWords(*ledger_->ledger(), line));
}

void InspectorPane::updatePreview() {
  const QuilloModelState& state = model_.state();
  if (!state.selectedArtifact) return;
  ArtifactManifest manifest = state.selectedArtifact->stored.manifest;
  manifest.title = state.draftTitle;
  manifest.annotations = state.draftAnnotations;
  const std::string text = ArtifactPasteTextRenderer::render(manifest);
  preview_->setText(QString::fromStdString(text));
  previewSize_->setText(describePasteText(text, QLocale()));
}

void InspectorPane::updateSaveState() {
  const QuilloModelState& state = model_.state();
  if (state.isSavingEdits) {
    saveState_->setText(tr("Saving…"));
  } else if (state.saveFailure) {
    QString reason = messageText(*state.saveFailure);
    if (!reason.endsWith(QLatin1Char('.'))) reason += QLatin1Char('.');
    saveState_->setText(tr("Not saved: %1 What you wrote is kept here.").arg(reason));
  } else {
    saveState_->setText(state.hasUnsavedChanges ? tr("Not saved yet") : tr("Saved"));
  }
}

void InspectorPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  window_->setOrientation(event->size().width() < widthForTwoColumns ? Qt::Vertical : Qt::Horizontal);
}

}  // namespace quillo
