#include "QuilloApp/Inspector/InspectorPane.h"

#include <QDateTime>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLocale>
#include <QSplitter>
#include <QVBoxLayout>
#include <chrono>
#include <initializer_list>
#include <utility>

#include "QuilloApp/Inspector/ScreenshotView.h"
#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"

namespace quillo {
namespace {

constexpr int unit = 8;
constexpr qsizetype attachmentLimit = 5000;  ///< characters from which chat fields have been seen to do so

QLabel* quietLabel(QWidget* parent, const QString& objectName) {
  auto* label = new QLabel(parent);
  label->setObjectName(objectName);
  label->setTextFormat(Qt::PlainText);
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, quietTextColor(palette, QPalette::WindowText, QPalette::Window));
  label->setPalette(palette);
  return label;
}

QLabel* headingFor(QWidget* field, const QString& text) {
  auto* label = new QLabel(text, field->parentWidget());
  QFont bold = label->font();
  bold.setBold(true);
  label->setFont(bold);
  label->setBuddy(field);
  return label;
}

/// A part of the splitter: its widgets one below the other.
QWidget* column(QWidget* parent, std::initializer_list<QWidget*> widgets) {
  auto* part = new QWidget(parent);
  auto* layout = new QVBoxLayout(part);
  layout->setContentsMargins(0, unit, 0, unit);
  layout->setSpacing(unit / 2);
  for (QWidget* widget : widgets) layout->addWidget(widget);
  return part;
}

QPushButton* button(QWidget* parent, const char* objectName, const QString& text, std::string_view symbol) {
  auto* made = new QPushButton(symbolIcon(symbol), text, parent);
  made->setObjectName(QString::fromLatin1(objectName));
  made->setAutoDefault(false);
  return made;
}

QString whenCaptured(Date date, const QLocale& locale) {
  const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(date.time_since_epoch()).count();
  return locale.toString(QDateTime::fromMSecsSinceEpoch(milliseconds), QLocale::ShortFormat);
}

/// Replaces the text only when it differs, so that the caret stays while one types.
void setDraft(QPlainTextEdit& field, const QString& text) {
  if (field.toPlainText() != text) field.setPlainText(text);
}

}  // namespace

QString describePasteText(const QString& text, const QLocale& locale) {
  // Four characters a token is what language models' own counts come to in English text.
  const qsizetype count = text.size();
  QString words = InspectorPane::tr("%1 characters, about %2 tokens")
                      .arg(locale.toString(static_cast<qlonglong>(count)), locale.toString((count + 3) / 4));
  if (count > attachmentLimit) words += InspectorPane::tr(". Chat fields may turn it into an attachment.");
  return words;
}

InspectorPane::InspectorPane(QuilloModel& model, Thumbnails& thumbnails, QWidget* parent)
    : QWidget(parent),
      model_(model),
      title_(new QLineEdit(this)),
      source_(quietLabel(this, QStringLiteral("source"))),
      screenshot_(new ScreenshotView(thumbnails, this)),
      note_(new QPlainTextEdit(this)),
      previewSize_(quietLabel(this, QStringLiteral("previewSize"))),
      preview_(new QPlainTextEdit(this)),
      saveState_(quietLabel(this, QStringLiteral("saveState"))),
      copy_(button(this, "copy", tr("&Copy"), "doc.on.doc")),
      reveal_(button(this, "reveal", tr("Show &Files"), "folder")),
      trash_(button(this, "trash", tr("Move to &Trash"), "trash")) {
  title_->setObjectName(QStringLiteral("title"));
  title_->setAccessibleName(tr("Title"));
  title_->setPlaceholderText(tr("Title"));
  screenshot_->setObjectName(QStringLiteral("screenshot"));
  screenshot_->setAccessibleName(tr("Screenshot"));
  note_->setObjectName(QStringLiteral("annotations"));
  note_->setAccessibleName(tr("Intent and corrections"));
  note_->setPlaceholderText(tr("What is this capture for? What did Quillo get wrong?"));
  note_->setTabChangesFocus(true);
  preview_->setObjectName(QStringLiteral("pastePreview"));
  preview_->setAccessibleName(tr("Paste preview"));
  preview_->setReadOnly(true);
  preview_->setTabChangesFocus(true);
  preview_->setUndoRedoEnabled(false);
  preview_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  buildTop();

  connect(title_, &QLineEdit::textEdited, this,
          [this](const QString& text) { model_.setDraftTitle(text.toStdString()); });
  connect(note_, &QPlainTextEdit::textChanged, this, [this] {
    const std::string text = note_->toPlainText().toStdString();
    if (text != model_.state().draftAnnotations) model_.setDraftAnnotations(text);
  });
  QWidget* former = title_;
  for (QWidget* next : std::initializer_list<QWidget*>{note_, preview_, copy_, reveal_, trash_})
    setTabOrder(std::exchange(former, next), next);
  update(QuilloModelChanges::everything());
}

void InspectorPane::buildTop() {
  QFont large = title_->font();
  large.setPointSizeF(large.pointSizeF() * 1.3);
  large.setBold(true);
  title_->setFont(large);
  QLabel* titleHeading = headingFor(title_, tr("T&itle"));
  QLabel* noteHeading = headingFor(note_, tr("Intent and c&orrections"));
  QLabel* previewHeading = headingFor(preview_, tr("What is &pasted"));

  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setObjectName(QStringLiteral("inspectorParts"));
  splitter->setChildrenCollapsible(false);
  splitter->setHandleWidth(unit);
  splitter->addWidget(column(this, {screenshot_}));
  splitter->addWidget(column(this, {noteHeading, note_}));
  splitter->addWidget(column(this, {previewHeading, preview_, previewSize_}));
  splitter->setSizes({280, 120, 240});
  splitter->setStretchFactor(0, 2);
  splitter->setStretchFactor(2, 2);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(unit);
  buttons->addWidget(saveState_, 1);
  for (QPushButton* each : {copy_, reveal_, trash_}) buttons->addWidget(each);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, unit);
  layout->setSpacing(unit / 2);
  layout->addWidget(titleHeading);
  layout->addWidget(title_);
  layout->addWidget(source_);
  layout->addWidget(splitter, 1);
  layout->addLayout(buttons);
}

void InspectorPane::update(QuilloModelChanges changes) {
  using Field = QuilloModelField;
  const QuilloModelState& state = model_.state();
  if (changes.contains(Field::selectedArtifact) && state.selectedArtifact) {
    const ArtifactManifest& manifest = state.selectedArtifact->stored.manifest;
    screenshot_->setScreenshot(QString::fromStdString(state.selectedArtifact->stored.screenshotPath().string()));
    const QLocale locale;
    source_->setText(tr("%1  ·  %2  ·  %3 elements")
                         .arg(QString::fromStdString(manifest.source.applicationName).simplified(),
                              whenCaptured(manifest.createdAt, locale),
                              locale.toString(static_cast<qlonglong>(manifest.nodeCount))));
  }
  const QString title = QString::fromStdString(state.draftTitle);
  if (title_->text() != title) title_->setText(title);
  setDraft(*note_, QString::fromStdString(state.draftAnnotations));
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

void InspectorPane::updatePreview() {
  const QuilloModelState& state = model_.state();
  if (!state.selectedArtifact) return;
  ArtifactManifest manifest = state.selectedArtifact->stored.manifest;
  manifest.title = state.draftTitle;
  manifest.annotations = state.draftAnnotations;
  const QString text = QString::fromStdString(ArtifactPasteTextRenderer::render(manifest));
  if (preview_->toPlainText() == text) return;
  preview_->setPlainText(text);
  previewSize_->setText(describePasteText(text, QLocale()));
}

void InspectorPane::updateSaveState() {
  const QuilloModelState& state = model_.state();
  if (state.activity.kind == Activity::Kind::saving)
    saveState_->setText(tr("Saving changes…"));
  else
    saveState_->setText(state.hasUnsavedChanges ? tr("Changes are not saved yet") : tr("All changes are saved"));
}

}  // namespace quillo
