#include "QuilloApp/Setup/ShortcutRows.h"

#include <QGridLayout>
#include <QStringList>

#include "QuilloApp/Interface/MessageText.h"
#include "QuilloApp/Interface/TextLabel.h"
#include "QuilloApp/Setup/SetupLayout.h"

namespace quillo {
namespace {

using setup::qString;
using setup::unit;

}  // namespace

QString keyNames(const QuilloHotKey& hotKey) {
  QStringList names;
  const auto add = [&](QuilloHotKeyModifiers modifier, const QString& name) {
    if (hotKey.modifiers.contains(modifier)) names.append(name);
  };
  add(QuilloHotKeyModifiers::control, ShortcutRows::tr("Control"));
  add(QuilloHotKeyModifiers::option, ShortcutRows::tr("Alt"));
  add(QuilloHotKeyModifiers::shift, ShortcutRows::tr("Shift"));
  add(QuilloHotKeyModifiers::command, ShortcutRows::tr("Super"));
  names.append(qString(hotKey.keyLabel));
  return names.join(QStringLiteral(" + "));
}

ShortcutRows::ShortcutRows(QuilloModel& model, QWidget* parent) : QWidget(parent), model_(model) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins({});
  grid->setHorizontalSpacing(2 * unit);
  grid->setVerticalSpacing(unit / 2);
  grid->setColumnStretch(0, 1);
  rows_ = {makeRow(*grid, QStringLiteral("captureShortcut"), tr("Capture the &frontmost window"),
                   &QuilloHotKeyConfiguration::capture),
           makeRow(*grid, QStringLiteral("pasteShortcut"), tr("&Paste the selected capture"),
                   &QuilloHotKeyConfiguration::paste)};
  message_ = setup::makeParagraph(this, QStringLiteral("shortcutMessage"), messageText(hotKeyRecordingGuidance));
  grid->setRowMinimumHeight(grid->rowCount(), unit / 2);
  grid->addWidget(message_, grid->rowCount() + 1, 0, 1, 2);
  observation_ = model_.observe([this](QuilloModelChanges /*changes*/) { update(); });
  update();
}

ShortcutRows::Row ShortcutRows::makeRow(QGridLayout& grid, const QString& objectName, const QString& name,
                                        QuilloHotKey QuilloHotKeyConfiguration::* member) {
  const Row row{.member = member,
                .button = new ShortcutButton(this),
                .words = setup::makeQuietParagraph(this, objectName + QStringLiteral("Keys"))};
  auto* label = new TextLabel(this, name);
  label->setBuddy(row.button);
  row.button->setObjectName(objectName);
  row.button->setMinimumWidth(22 * unit);
  const int line = grid.rowCount() + 1;
  grid.setRowMinimumHeight(line - 1, unit / 2);
  grid.addWidget(label, line, 0);
  grid.addWidget(row.words, line + 1, 0);
  grid.addWidget(row.button, line, 1, 2, 1, Qt::AlignVCenter);
  connect(row.button, &ShortcutButton::recordingBegan, this, [this] {
    message_->setText(messageText(hotKeyRecordingGuidance));
    model_.beginHotKeyRecording();
  });
  connect(row.button, &ShortcutButton::recordingEnded, this, [this] { model_.endHotKeyRecording(); });
  connect(row.button, &ShortcutButton::refused, this,
          [this] { message_->setText(messageText(hotKeyRecordingRefusal)); });
  connect(row.button, &ShortcutButton::recorded, this,
          [this, member](const QuilloHotKey& hotKey) { apply(member, hotKey); });
  return row;
}

void ShortcutRows::apply(QuilloHotKey QuilloHotKeyConfiguration::* member, const QuilloHotKey& hotKey) {
  QuilloHotKeyConfiguration configuration = model_.state().hotKeyConfiguration;
  configuration.*member = hotKey;
  if (const auto refusal = configuration.validationMessage()) {
    message_->setText(messageText(*refusal));
    return;
  }
  const auto result = model_.updateHotKeyConfiguration(configuration);
  if (result) {
    message_->setText(tr("Keyboard shortcuts updated"));
    return;
  }
  message_->setText(tr("%1: %2 %3")
                        .arg(keyNames(hotKey), messageText(result.error().errorDescription()),
                             messageText(result.error().recoverySuggestion())));
}

void ShortcutRows::update() {
  const QuilloModelState& state = model_.state();
  for (const Row& row : rows_) {
    const QuilloHotKey& hotKey = state.hotKeyConfiguration.*row.member;
    row.button->setShortcutText(qString(hotKey.displayString()));
    row.words->setText(keyNames(hotKey));
    row.button->setAccessibleDescription(keyNames(hotKey));
  }
  const bool isFailing = state.hotKeyRegistrationError.has_value();
  if (isFailing) {
    message_->setText(
        messageText(*state.hotKeyRegistrationError) + QLatin1Char(' ') +
        tr("Record another combination, or free this one in the program that has it. Quillo keeps trying."));
  } else if (showsFailure_) {
    message_->setText(messageText(hotKeyRecordingGuidance));
  }
  showsFailure_ = isFailing;
}

}  // namespace quillo
