#include "QuilloApp/Interface/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>

// Outside of any namespace, as the toolkit's macro wants it.
static void initializeTranslations() {
  Q_INIT_RESOURCE(Translations);
}

namespace quillo {
namespace {

QString folder() {
  return QStringLiteral(":/translations");
}

/// Whether there was one to install; its language then is `spoken`.
bool install(const QLocale& locale, const QString& name, const QString& path, QLocale& spoken) {
  auto translator = std::make_unique<QTranslator>(qApp);
  if (!translator->load(locale, name, QStringLiteral("_"), path)) return false;
  spoken = QLocale(translator->language());
  QCoreApplication::installTranslator(translator.release());
  return true;
}

}  // namespace

void installTranslations(const QLocale& locale) {
  initializeTranslations();
  const QString own = QStringLiteral("quillo");
  QLocale spoken(QLocale::English);
  if (!install(locale, own, folder(), spoken)) install(spoken, own, folder(), spoken);
  // In the same language, or a dialog would speak two.
  install(spoken, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath), spoken);
}

}  // namespace quillo
