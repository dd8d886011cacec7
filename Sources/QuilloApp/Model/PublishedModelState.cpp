#include "QuilloApp/Model/PublishedModelState.h"

#include <algorithm>
#include <vector>

namespace quillo {

/// Outlives the state while a notification is on its way.
class PublishedModelState::Observers {
 public:
  void add(const std::shared_ptr<QuilloModelObserver>& observer) { observers_.push_back(observer); }

  /// Returns whether a notification has to be posted.
  bool note(QuilloModelField field) {
    const bool isFirst = changes_.isEmpty();
    changes_.add(field);
    return isFirst;
  }

  void notify() {
    const QuilloModelChanges changes = std::exchange(changes_, {});
    std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
    const auto called = observers_;  // an observer may add another one
    for (const auto& observer : called) {
      if (const auto alive = observer.lock()) (*alive)(changes);
    }
  }

 private:
  std::vector<std::weak_ptr<QuilloModelObserver>> observers_;
  QuilloModelChanges changes_;
};

PublishedModelState::PublishedModelState(TaskExecutor mainExecutor)
    : mainExecutor_(std::move(mainExecutor)), observers_(std::make_shared<Observers>()) {}

void PublishedModelState::replaceListed(const StoredArtifact& artifact) {
  const auto listed = std::ranges::find(state_.artifacts, artifact.manifest.id,
                                        [](const StoredArtifact& each) { return each.manifest.id; });
  if (listed == state_.artifacts.end()) return;
  *listed = artifact;
  listed->manifest.contextText.clear();
  publish(QuilloModelField::artifacts);
}

QuilloModelObservation PublishedModelState::observe(QuilloModelObserver observer) {
  auto shared = std::make_shared<QuilloModelObserver>(std::move(observer));
  observers_->add(shared);
  return QuilloModelObservation(std::move(shared));
}

void PublishedModelState::publish(QuilloModelField field) {
  if (field == QuilloModelField::artifacts) ++artifactsRevision_;
  if (!observers_->note(field)) return;
  mainExecutor_.queue()->post([observers = std::weak_ptr(observers_)] {
    if (const auto alive = observers.lock()) alive->notify();
  });
}

}  // namespace quillo
