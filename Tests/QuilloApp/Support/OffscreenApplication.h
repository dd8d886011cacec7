#pragma once

#include <QApplication>
#include <cstdlib>
#include <string>

#include "QuilloApp/Interface/ContrastStyle.h"
#include "QuilloApp/Interface/Translations.h"

namespace quillo::test {

/// The application object, which draws into memory, in a language and at so many pixels a point. It ends before the
/// program does: the toolkit's own devices need it.
class OffscreenApplication {
 public:
  explicit OffscreenApplication(const QLocale& language = QLocale::English, int pixelsPerPoint = 1)
      : application_(argumentCount_, arguments(pixelsPerPoint)) {
    installTranslations(language);
    QApplication::setStyle(new ContrastStyle(QStringLiteral("Fusion")));
  }

  void processEvents() { QApplication::processEvents(); }

 private:
  static char** arguments(int pixelsPerPoint) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_SCALE_FACTOR", std::to_string(pixelsPerPoint).c_str(), 1);
    static char name[] = "test";             // NOLINT(*-avoid-c-arrays): what the toolkit wants
    static char* texts[] = {name, nullptr};  // NOLINT(*-avoid-c-arrays)
    return texts;
  }

  int argumentCount_ = 1;
  QApplication application_;
};

}  // namespace quillo::test
