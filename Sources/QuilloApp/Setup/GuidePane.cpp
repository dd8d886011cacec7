#include "QuilloApp/Setup/GuidePane.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>
#include <chrono>

#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Translations.h"
#include "QuilloApp/Setup/PermissionRows.h"
#include "QuilloApp/Setup/SetupLayout.h"
#include "QuilloApp/Setup/ShortcutRows.h"

namespace quillo {
namespace {

using setup::qString;
using setup::unit;

constexpr double titleScale = 1.5;

QLabel* makeTitle(QWidget* parent, const QString& text) {
  auto* label = setup::makeHeading(parent, text);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * titleScale);
  label->setFont(font);
  label->setWordWrap(true);
  return label;
}

QPushButton* makeButton(QWidget* parent, const QString& objectName, const QString& text) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(objectName);
  button->setAutoDefault(false);
  return button;
}

}  // namespace

GuidePane::GuidePane(QuilloModel& model, TaskGroup& tasks, QWidget* parent)
    : QWidget(parent),
      model_(model),
      progress_(std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now())),
      pages_(new QStackedWidget(this)),
      skip_(makeButton(this, QStringLiteral("skipGuide"), tr("&Skip for Now"))),
      back_(makeButton(this, QStringLiteral("guideBack"), tr("&Back"))),
      next_(makeButton(this, QStringLiteral("guideNext"), {})) {
  next_->setDefault(true);
  connect(skip_, &QPushButton::clicked, this, &GuidePane::skipped);
  connect(back_, &QPushButton::clicked, this, [this] { go(static_cast<std::size_t>(pages_->currentIndex()) - 1); });
  connect(next_, &QPushButton::clicked, this, [this] {
    const auto step = static_cast<std::size_t>(pages_->currentIndex());
    if (step + 1 == steps_.size()) return Q_EMIT finished();
    go(step + 1);
  });

  auto* row = new QHBoxLayout;
  row->setSpacing(unit / 2);
  auto* capture = new QWidget(this);
  auto* paste = new QWidget(this);
  steps_ = {
      addPage(*row, tr("Access"), tr("Let Quillo read windows"),
              tr("Quillo captures the window in front of you, its pixels and its text, and pastes them where a "
                 "language model reads. Everything stays on this machine until you paste it."),
              new PermissionRows(model, tasks, this)),
      addPage(*row, tr("Shortcuts"), tr("Two shortcuts are all you need"),
              tr("They work in every application. Keep them, or choose your own."), new ShortcutRows(model, this)),
      addPage(*row, tr("Capture"), tr("Capture a window"),
              tr("Open the practice window and press the capture shortcut while it is in front."), capture),
      addPage(*row, tr("Paste"), tr("Paste the capture"),
              tr("Click into the practice window's lower field and press the paste shortcut. Your clipboard is as "
                 "it was afterwards."),
              paste)};
  row->addStretch();
  steps_[2].practice = addPracticeButton(capture);
  steps_[3].practice = addPracticeButton(paste);

  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(unit);
  buttons->addWidget(skip_);
  buttons->addStretch();
  buttons->addWidget(back_);
  buttons->addWidget(next_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(2 * unit);
  layout->addLayout(row);
  layout->addWidget(pages_, 1);
  layout->addLayout(buttons);

  connect(&practice_, &PracticeProcess::openChanged, this, &GuidePane::update);
  connect(&practice_, &PracticeProcess::pasted, this, [this](qsizetype count) {
    progress_.notePaste(static_cast<std::size_t>(count));
    update();
    Q_EMIT attentionWanted();
  });
  observation_ = model_.observe([this](QuilloModelChanges /*changes*/) { update(); });
  update();
}

GuidePane::Page GuidePane::addPage(QBoxLayout& row, const QString& name, const QString& title, const QString& text,
                                   QWidget* contents) {
  const Page page{.mark = new QLabel(this),
                  .name = new QLabel(name, this),
                  .symbol = new QLabel(this),
                  .state = setup::makeParagraph(this, QStringLiteral("guideState"))};
  page.mark->setMinimumSize(2 * unit, 2 * unit);
  page.mark->setAlignment(Qt::AlignCenter);
  row.addWidget(page.mark);
  row.addWidget(page.name);
  row.addSpacing(unit);

  auto* widget = new QWidget(this);
  auto* state = new QHBoxLayout;
  state->setSpacing(unit);
  page.symbol->setFixedSize(3 * unit, 3 * unit);
  state->addWidget(page.symbol, 0, Qt::AlignTop);
  state->addWidget(page.state, 1);
  auto* layout = new QVBoxLayout(widget);
  layout->setContentsMargins({});
  layout->setSpacing(unit);
  layout->addWidget(makeTitle(widget, title));
  layout->addWidget(setup::makeParagraph(widget, QStringLiteral("guideText"), text));
  layout->addSpacing(unit);
  layout->addWidget(contents);
  layout->addSpacing(unit);
  layout->addLayout(state);
  layout->addStretch();
  pages_->addWidget(widget);
  return page;
}

QPushButton* GuidePane::addPracticeButton(QWidget* contents) const {
  auto* button = makeButton(contents, QStringLiteral("openPractice"), tr("Open &Practice Window"));
  auto* layout = new QHBoxLayout(contents);
  layout->setContentsMargins({});
  layout->addWidget(button);
  layout->addStretch();
  connect(button, &QPushButton::clicked, this, &GuidePane::openPractice);
  return button;
}

void GuidePane::openPractice() {
  const QuilloHotKeyConfiguration& keys = model_.state().hotKeyConfiguration;
  practice_.open(keyNames(keys.capture), keyNames(keys.paste));
}

void GuidePane::go(std::size_t step) {
  pages_->setCurrentIndex(static_cast<int>(step));
  update();
  QPushButton* practice = steps_.at(step).practice;
  (practice != nullptr && !next_->isEnabled() ? practice : next_)->setFocus();
}

QString GuidePane::stateText(GuideStep step) const {
  const QuilloModelState& state = model_.state();
  const bool isDone = progress_.isDone(step);
  switch (step) {
    case GuideStep::access: return isDone ? tr("Quillo may read windows.") : tr("Waiting for access…");
    case GuideStep::shortcuts: return isDone ? tr("Both shortcuts are ready.") : tr("The shortcuts are not ready yet.");
    case GuideStep::capture:
      if (isDone) return tr("Captured: %1").arg(qString(progress_.capturedTitle()));
      break;
    case GuideStep::paste:
      if (isDone)
        return tr("Pasted: %L1 characters have arrived.", nullptr, pluralNumber(*progress_.pastedCharacterCount()))
            .arg(*progress_.pastedCharacterCount());
      break;
  }
  if (state.activity.kind == Activity::Kind::failure) return messageText(state.activity.message);
  const QuilloHotKey& keys =
      step == GuideStep::capture ? state.hotKeyConfiguration.capture : state.hotKeyConfiguration.paste;
  return practice_.isOpen() ? tr("Waiting for you to press %1…").arg(keyNames(keys))
                            : tr("The practice window is not open.");
}

void GuidePane::update() {
  const bool hadCapture = progress_.isDone(GuideStep::capture);
  progress_.follow(model_.state());
  const auto current = static_cast<std::size_t>(pages_->currentIndex());
  // The practice window is in front now, and asks for the paste by itself.
  const auto captureStep = static_cast<std::size_t>(GuideStep::capture);
  if (!hadCapture && progress_.isDone(GuideStep::capture) && current == captureStep) return go(captureStep + 1);

  for (const GuideStep step : GuideProgress::steps) {
    const auto index = static_cast<std::size_t>(step);
    const Page& page = steps_.at(index);
    const bool isDone = progress_.isDone(step);
    const auto pixmap = [&](const char* name, int size) {
      return symbolIcon(name).pixmap(QSize(size, size), devicePixelRatioF());
    };
    if (isDone) {
      page.mark->setPixmap(pixmap("checkmark.circle", 16));
      page.mark->setAccessibleName(tr("Done"));
    } else {
      page.mark->setText(locale().toString(index + 1));
      page.mark->setAccessibleName(tr("Step %L1").arg(index + 1));
    }
    QFont font = page.name->font();
    font.setBold(index == current);
    page.name->setFont(font);
    page.name->setAccessibleName(tr("Step %1 of %2: %3").arg(index + 1).arg(steps_.size()).arg(page.name->text()) +
                                 (isDone ? QStringLiteral(", ") + tr("done") : QString()));
    page.symbol->setPixmap(pixmap(isDone ? "checkmark.circle" : "hourglass", 20));
    page.symbol->setAccessibleName(isDone ? tr("Done") : tr("Waiting"));
    page.state->setText(stateText(step));
  }
  const bool isLast = current + 1 == steps_.size();
  back_->setVisible(current > 0);
  next_->setText(isLast ? tr("&Finish") : tr("&Continue"));
  next_->setEnabled(isLast ? progress_.isEverythingDone() : progress_.isDone(GuideProgress::steps.at(current)));
}

void GuidePane::changeEvent(QEvent* event) {
  // The symbols are drawn in the palette's colour.
  if (event->type() == QEvent::PaletteChange) update();
  QWidget::changeEvent(event);
}

}  // namespace quillo
