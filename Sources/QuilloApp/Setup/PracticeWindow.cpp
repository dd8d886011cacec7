#include "QuilloApp/Setup/PracticeWindow.h"

#include <sys/prctl.h>

#include <QApplication>
#include <QVBoxLayout>
#include <csignal>
#include <cstdio>

#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Interface/Translations.h"
#include "QuilloApp/Setup/SetupLayout.h"

namespace quillo {

using setup::unit;

PracticeWindow::PracticeWindow(const QString& captureKeys, const QString& pasteKeys)
    : field_(new QPlainTextEdit(this)), result_(setup::makeParagraph(this, QStringLiteral("practiceResult"))) {
  setObjectName(QStringLiteral("practice"));
  setWindowTitle(tr("A Letter to Practise With"));
  setWindowIcon(applicationIcon());
  resize(60 * unit, 60 * unit);

  auto* letter = new QPlainTextEdit(
      tr("Dear reader,\n\nthis letter is here to be captured. When you press the capture shortcut, Quillo keeps a "
         "picture of this window and all of its words.\n\nWith kind regards"),
      this);
  letter->setObjectName(QStringLiteral("practiceLetter"));
  letter->setAccessibleName(tr("Letter"));
  letter->setReadOnly(true);
  letter->setTabChangesFocus(true);
  field_->setObjectName(QStringLiteral("practiceField"));
  field_->setAccessibleName(tr("Prompt"));
  field_->setPlaceholderText(tr("Your prompt"));
  field_->setTabChangesFocus(true);
  connect(field_, &QPlainTextEdit::textChanged, this, &PracticeWindow::noticePaste);
  result_->hide();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3 * unit, 3 * unit, 3 * unit, 3 * unit);
  layout->setSpacing(unit);
  layout->addWidget(setup::makeHeading(this, tr("Capture this window: press %1").arg(captureKeys)));
  layout->addWidget(letter, 2);
  layout->addSpacing(unit);
  layout->addWidget(setup::makeHeading(this, tr("Then paste into this field: press %1").arg(pasteKeys)));
  layout->addWidget(field_, 3);
  layout->addWidget(result_);
  field_->setFocus();
}

void PracticeWindow::noticePaste() {
  const QString text = field_->toPlainText();
  if (!text.contains(QStringLiteral("# Quillo capture: "))) return;
  const qsizetype count = text.size();
  setup::setOptionalText(*result_, tr("The capture has arrived: %L1 characters. This is what a language model reads.",
                                      nullptr, pluralNumber(count))
                                       .arg(count));
  std::printf("pasted %lld\n", static_cast<long long>(count));
  std::fflush(stdout);
}

int runPracticeWindow(const QStringList& keys) {
  // It is part of the guide, and ends with it however that ends.
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  // A name of its own: windows of the application itself are never captured.
  QApplication::setApplicationName(QStringLiteral("Quillo Practice"));
  QApplication::setDesktopFileName({});
  QApplication::setQuitOnLastWindowClosed(true);
  PracticeWindow window(keys.value(0), keys.value(1));
  window.show();
  return QApplication::exec();
}

}  // namespace quillo
