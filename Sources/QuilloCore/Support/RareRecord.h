#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"
#include "QuilloCore/Support/RecordHash.h"

namespace quillo {

/// A member record of which most owners have nothing to say: as long as it equals a new one, it takes the room of a
/// pointer and not that of all its members. Otherwise a value like the record: it copies, compares, hashes and travels
/// as JSON in the same way. Read by `->` and `*`, changed by `edit()`.
template <class Record>
class RareRecord {
 public:
  RareRecord() = default;
  RareRecord(Record record) {  // NOLINT(*-explicit-*): stands for the record
    if (record != untouched()) record_ = std::make_unique<Record>(std::move(record));
  }
  RareRecord(const RareRecord& other) : RareRecord(*other) {}
  RareRecord(RareRecord&&) noexcept = default;
  RareRecord& operator=(RareRecord other) noexcept {
    record_ = std::move(other.record_);
    return *this;
  }
  ~RareRecord() = default;

  const Record& operator*() const { return record_ ? *record_ : untouched(); }
  const Record* operator->() const { return &**this; }
  Record& edit() {
    if (!record_) record_ = std::make_unique<Record>();
    return *record_;
  }

  friend bool operator==(const RareRecord& a, const RareRecord& b) { return *a == *b; }

 private:
  static const Record& untouched() {
    static const Record record;
    return record;
  }

  std::unique_ptr<Record> record_;
};

template <class Record>
struct JsonCodec<RareRecord<Record>> {
  static void write(JsonWriter& writer, const RareRecord<Record>& record) { writeJson(writer, *record); }
  static RareRecord<Record> read(const JsonCursor& cursor) { return readJson<Record>(cursor); }
};

}  // namespace quillo

template <class Record>
struct std::hash<quillo::RareRecord<Record>> {
  std::size_t operator()(const quillo::RareRecord<Record>& record) const { return quillo::RecordHash()(*record); }
};
