#include "QuilloApp/Inspector/ArtifactReader.h"

#include <utility>

namespace quillo {

ArtifactReader::ArtifactReader(TaskGroup& tasks, QObject* parent) : QObject(parent), tasks_(tasks) {}

ArtifactReader::~ArtifactReader() {
  cancel();
}

void ArtifactReader::read(std::shared_ptr<const ArtifactContents> contents) {
  cancel();
  reading_ = tasks_.start([this, wanted = wanted_, number = wanted_->number, contents = std::move(contents)] {
    return run(this, wanted, number, contents);
  });
}

void ArtifactReader::cancel() {
  // The number, because the cancellation of a result that is already on its way comes too late.
  ++wanted_->number;
  reading_.cancel();
}

Task<> ArtifactReader::run(ArtifactReader* reader, std::shared_ptr<const Wanted> wanted, std::uint64_t number,
                           std::shared_ptr<const ArtifactContents> contents) {
  if (wanted->number != number) co_return;
  Task<std::shared_ptr<const AccessibilityLedger>> readingLedger =
      reader->queue_.run([contents]() -> std::shared_ptr<const AccessibilityLedger> {
        return std::make_shared<AccessibilityLedger>(
            std::shared_ptr<const InterfaceObservation>(contents, &contents->interfaceObservation));
      });
  auto ledger = co_await std::move(readingLedger);
  if (wanted->number != number) co_return;
  Q_EMIT reader->ledgerRead(std::move(ledger));

  Task<std::shared_ptr<const CapturedPicture>> readingPicture =
      reader->queue_.run([contents] { return CapturedPicture::decode(contents->screenshotPNG); });
  auto picture = co_await std::move(readingPicture);
  if (wanted->number != number) co_return;
  Q_EMIT reader->pictureRead(std::move(picture));
}

}  // namespace quillo
