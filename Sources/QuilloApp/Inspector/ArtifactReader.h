#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>

#include "QuilloApp/Inspector/AccessibilityLedger.h"
#include "QuilloApp/Inspector/CapturedPicture.h"
#include "QuilloApp/Model/OpenArtifact.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo {

/// Makes a ledger and a picture of an artifact's contents, on a thread of its own, and tells them on the thread that it
/// lives on. What was asked last is what is told; what is no longer wanted and has not begun is not made.
class ArtifactReader : public QObject {
  Q_OBJECT

 public:
  /// `tasks` is ended by its owner, before or after this.
  explicit ArtifactReader(TaskGroup& tasks, QObject* parent = nullptr);
  ~ArtifactReader() override;

  void read(std::shared_ptr<const ArtifactContents> contents);
  /// Nothing is wanted any more.
  void cancel();

 Q_SIGNALS:
  void ledgerRead(std::shared_ptr<const quillo::AccessibilityLedger> ledger);
  /// Null when it cannot be read.
  void pictureRead(std::shared_ptr<const quillo::CapturedPicture> picture);

 private:
  struct Wanted {
    std::uint64_t number = 0;  ///< of what was asked last
  };

  /// The task may begin when the reader is gone: as long as `number` is wanted the reader is there.
  static Task<> run(ArtifactReader* reader, std::shared_ptr<const Wanted> wanted, std::uint64_t number,
                    std::shared_ptr<const ArtifactContents> contents);

  TaskGroup& tasks_;
  std::shared_ptr<Wanted> wanted_ = std::make_shared<Wanted>();
  TaskHandle reading_;
  SerialQueue queue_{"inspector"};
};

}  // namespace quillo
