#pragma once

#include <QProcess>
#include <QStringList>

namespace quillo {

/// The practice window, in a process of its own: the application never captures its own windows.
class PracticeProcess : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  /// Closes the window.
  ~PracticeProcess() override;

  /// Opens the window, or brings it to the front again by opening it anew. The texts name the shortcuts' keys.
  void open(const QString& captureKeys, const QString& pasteKeys);
  bool isOpen() const { return process_.state() != QProcess::NotRunning; }

 Q_SIGNALS:
  void pasted(qsizetype characterCount);
  void openChanged();

 private:
  void end();
  void read();

  QProcess process_{this};
  bool isConnected_ = false;
};

}  // namespace quillo
