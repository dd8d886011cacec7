#pragma once

#include <QApplication>

#include "QuilloApp/Interface/Translations.h"

namespace quillo::test {

/// The application object, which draws into memory. It ends before the program does: the toolkit's own devices need it.
class OffscreenApplication {
 public:
  OffscreenApplication() : application_(argumentCount_, arguments_) { installTranslations(QLocale::English); }

  void processEvents() { QApplication::processEvents(); }

 private:
  bool isOffscreen_ = qputenv("QT_QPA_PLATFORM", "offscreen");
  int argumentCount_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  QApplication application_;
};

}  // namespace quillo::test
