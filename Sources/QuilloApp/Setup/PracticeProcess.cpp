#include "QuilloApp/Setup/PracticeProcess.h"

#include <QCoreApplication>

namespace quillo {
namespace {

/// It has nothing to save, so it ends at once when it is asked to.
constexpr int endingMilliseconds = 500;

}  // namespace

PracticeProcess::~PracticeProcess() {
  process_.disconnect(this);
  end();
}

void PracticeProcess::open(const QString& captureKeys, const QString& pasteKeys) {
  if (!isConnected_) {
    isConnected_ = true;
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&process_, &QProcess::readyReadStandardOutput, this, &PracticeProcess::read);
    connect(&process_, &QProcess::stateChanged, this, &PracticeProcess::openChanged);
  }
  end();
  process_.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--practice"), captureKeys, pasteKeys});
}

void PracticeProcess::end() {
  if (!isOpen()) return;
  process_.terminate();
  if (!process_.waitForFinished(endingMilliseconds)) process_.kill();
  process_.waitForFinished(endingMilliseconds);
}

void PracticeProcess::read() {
  while (process_.canReadLine()) {
    const QList<QByteArray> words = process_.readLine().trimmed().split(' ');
    if (words.size() == 2 && words[0] == "pasted") Q_EMIT pasted(words[1].toLongLong());
  }
}

}  // namespace quillo
