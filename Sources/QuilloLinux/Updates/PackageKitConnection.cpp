#include "QuilloLinux/Updates/PackageKitConnection.h"

#include <poll.h>
#include <systemd/sd-bus.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Support/Clocks.h"
#include "QuilloCore/Updates/SoftwareUpdateError.h"

namespace quillo {
namespace {

using Error = SoftwareUpdateError;

constexpr const char* service = "org.freedesktop.PackageKit";
constexpr const char* servicePath = "/org/freedesktop/PackageKit";
constexpr const char* transactionInterface = "org.freedesktop.PackageKit.Transaction";
constexpr std::uint32_t succeeded = 1;  // how a transaction may end

struct UnrefMessage {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, UnrefMessage>;

struct UnrefSlot {
  void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, UnrefSlot>;

[[noreturn]] void failWith(int negativeErrno) {
  throw Error(Error::ServiceFailed{std::strerror(-negativeErrno)});
}

int checked(int result) {
  if (result < 0) failWith(result);
  return result;
}

std::uint64_t microsecondsOf(double seconds) {
  constexpr double microsecondsPerSecond = 1e6;
  return static_cast<std::uint64_t>(seconds * microsecondsPerSecond);
}

std::uint64_t uptimeMicroseconds() {
  return systemUptimeNanoseconds() / 1000;
}

/// The error of a reply in our terms.
Error errorOf(const sd_bus_error& error) {
  const std::string_view name = error.name == nullptr ? "" : error.name;
  for (const std::string_view absent :
       {"org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner",
        "org.freedesktop.DBus.Error.Spawn.ServiceNotFound", "org.freedesktop.DBus.Error.Spawn.FileInvalid",
        "org.freedesktop.systemd1.NoSuchUnit"}) {
    if (name == absent) return Error(Error::NoPackageService{});
  }
  return Error(Error::ServiceFailed{error.message == nullptr ? std::string(name) : std::string(error.message)});
}

/// "name;version;architecture;origin"
std::optional<SoftwarePackage> packageOf(std::string_view identifier) {
  std::array<std::string_view, 4> parts;
  std::size_t count = 0;
  for (std::string_view rest = identifier; count < parts.size(); ++count) {
    const std::size_t end = rest.find(';');
    parts.at(count) = rest.substr(0, end);
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  if (count + 1 < parts.size()) return std::nullopt;
  return SoftwarePackage{.identifier = std::string(identifier),
                         .name = std::string(parts[0]),
                         .architecture = std::string(parts[2]),
                         .version = std::string(parts[1])};
}

}  // namespace

/// What a running transaction has told. The handlers are called from the bus's C code, so they throw nothing.
struct PackageKitConnection::Progress {
  bool* hasSignOfLife = nullptr;
  std::vector<std::string> packageIdentifiers;
  std::string failure;
  std::uint32_t exit = 0;
  bool isFinished = false;
  Slot signals;
  Slot owner;

  static int onSignal(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<Progress*>(data);
    *self.hasSignOfLife = true;
    if (sd_bus_message_is_signal(message, transactionInterface, "Package") > 0) {
      std::uint32_t info = 0;
      const char* identifier = nullptr;
      if (sd_bus_message_read(message, "us", &info, &identifier) > 0) self.packageIdentifiers.emplace_back(identifier);
    } else if (sd_bus_message_is_signal(message, transactionInterface, "ErrorCode") > 0) {
      std::uint32_t code = 0;
      const char* details = nullptr;
      if (sd_bus_message_read(message, "us", &code, &details) > 0) self.failure = details;
    } else if (sd_bus_message_is_signal(message, transactionInterface, "Finished") > 0) {
      sd_bus_message_read(message, "u", &self.exit);
      self.isFinished = true;
    }
    return 0;
  }

  static int onOwnerChanged(sd_bus_message* message, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<Progress*>(data);
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &before, &after) > 0 && *before != '\0') {
      if (self.failure.empty()) self.failure = "it ended before its work was done";
      self.isFinished = true;
    }
    return 0;
  }
};

void PackageKitConnection::CloseBus::operator()(sd_bus* bus) const {
  sd_bus_close_unref(bus);
}

PackageKitConnection::PackageKitConnection(const std::string& address, PackageKitLimits limits,
                                           const CancellationEvent& cancellation)
    : limits_(limits), cancellation_(cancellation) {
  open(address);
}

PackageKitConnection::~PackageKitConnection() = default;

void PackageKitConnection::open(const std::string& address) {
  sd_bus* raw = nullptr;
  int result = 0;
  if (address.empty()) {
    result = sd_bus_open_system(&raw);
    bus_.reset(raw);
  } else {
    checked(sd_bus_new(&raw));
    bus_.reset(raw);
    checked(sd_bus_set_address(raw, address.c_str()));
    checked(sd_bus_set_bus_client(raw, 1));
    result = sd_bus_start(raw);
  }
  if (result < 0) throw Error(Error::NoSystemBus{});
  checked(sd_bus_set_method_call_timeout(raw, microsecondsOf(limits_.answer)));
  const std::uint64_t deadline = uptimeMicroseconds() + microsecondsOf(limits_.answer);
  while (sd_bus_is_ready(raw) == 0) {
    const int processed = sd_bus_process(raw, nullptr);
    if (processed < 0) throw Error(Error::NoSystemBus{});
    if (processed > 0) continue;
    const std::uint64_t now = uptimeMicroseconds();
    if (now >= deadline) throw Error(Error::ServiceUnresponsive{limits_.answer});
    waitForEvent(deadline - now);
  }
  if (sd_bus_is_ready(raw) < 0) throw Error(Error::NoSystemBus{});
}

std::vector<SoftwarePackage> PackageKitConnection::run(const PackageKitRequest& request) {
  const std::string path = createTransaction();
  Progress progress;
  try {
    follow(path, progress);
    setHints(path, request.attendance);
    begin(path, request);
    waitFor(progress.isFinished, limits_.silence);
  } catch (...) {
    cancelTransaction(path);
    throw;
  }
  if (progress.exit != succeeded) {
    throw Error(Error::ServiceFailed{progress.failure.empty() ? "it did not say why" : progress.failure});
  }
  std::vector<SoftwarePackage> packages;
  for (const std::string& identifier : progress.packageIdentifiers) {
    if (auto package = packageOf(identifier)) packages.push_back(std::move(*package));
  }
  return packages;
}

std::string PackageKitConnection::createTransaction() {
  sd_bus_message* raw = nullptr;
  checked(sd_bus_message_new_method_call(bus_.get(), &raw, service, servicePath, service, "CreateTransaction"));
  const Message message(raw);
  const auto reply = call(message.get());
  const char* path = nullptr;
  checked(sd_bus_message_read(reply.get(), "o", &path));
  return path;
}

void PackageKitConnection::follow(const std::string& path, Progress& progress) {
  progress.hasSignOfLife = &hasSignOfLife_;
  sd_bus_slot* slot = nullptr;
  checked(sd_bus_match_signal_async(bus_.get(), &slot, service, path.c_str(), nullptr, nullptr, Progress::onSignal,
                                    nullptr, &progress));
  progress.signals.reset(slot);
  const std::string rule = std::string(
                               "type='signal',sender='org.freedesktop.DBus',path='/org/freedesktop/DBus',"
                               "interface='org.freedesktop.DBus',member='NameOwnerChanged',arg0='") +
                           service + "'";
  checked(sd_bus_add_match_async(bus_.get(), &slot, rule.c_str(), Progress::onOwnerChanged, nullptr, &progress));
  progress.owner.reset(slot);
}

void PackageKitConnection::setHints(const std::string& path, UpdateAttendance attendance) {
  const bool isAttended = attendance == UpdateAttendance::user;
  sd_bus_message* raw = nullptr;
  checked(sd_bus_message_new_method_call(bus_.get(), &raw, service, path.c_str(), transactionInterface, "SetHints"));
  const Message message(raw);
  checked(sd_bus_message_append(raw, "as", 2, isAttended ? "background=false" : "background=true",
                                isAttended ? "interactive=true" : "interactive=false"));
  call(message.get());
}

void PackageKitConnection::begin(const std::string& path, const PackageKitRequest& request) {
  sd_bus_message* raw = nullptr;
  checked(
      sd_bus_message_new_method_call(bus_.get(), &raw, service, path.c_str(), transactionInterface, request.method));
  const Message message(raw);
  if (const auto* number = std::get_if<std::uint64_t>(&request.argument)) {
    checked(sd_bus_message_append(raw, "t", *number));
  } else if (const auto* flag = std::get_if<bool>(&request.argument)) {
    checked(sd_bus_message_append(raw, "b", static_cast<int>(*flag)));
  }
  if (request.texts) {
    checked(sd_bus_message_open_container(raw, SD_BUS_TYPE_ARRAY, "s"));
    for (const std::string& text : *request.texts) checked(sd_bus_message_append(raw, "s", text.c_str()));
    checked(sd_bus_message_close_container(raw));
  }
  call(message.get());
}

std::shared_ptr<sd_bus_message> PackageKitConnection::call(sd_bus_message* message) {
  struct Answer {
    sd_bus_message* reply = nullptr;
    bool isThere = false;
  } answer;
  const auto onReply = [](sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& answer = *static_cast<Answer*>(data);
    answer.reply = sd_bus_message_ref(reply);
    answer.isThere = true;
    return 0;
  };
  sd_bus_slot* raw = nullptr;
  // The bus's own time-out would answer at the same moment as ours; ours tells which it was.
  checked(sd_bus_call_async(bus_.get(), &raw, message, onReply, &answer, UINT64_MAX));
  const Slot slot(raw);
  waitFor(answer.isThere, limits_.answer);
  const std::shared_ptr<sd_bus_message> reply(answer.reply, UnrefMessage{});
  if (sd_bus_message_is_method_error(reply.get(), nullptr) > 0) throw errorOf(*sd_bus_message_get_error(reply.get()));
  return reply;
}

void PackageKitConnection::cancelTransaction(const std::string& path) {
  sd_bus_message* raw = nullptr;
  if (sd_bus_message_new_method_call(bus_.get(), &raw, service, path.c_str(), transactionInterface, "Cancel") < 0) {
    return;
  }
  const Message message(raw);
  sd_bus_message_set_expect_reply(raw, 0);
  sd_bus_send(bus_.get(), raw, nullptr);
}

void PackageKitConnection::waitFor(const bool& isDone, double seconds) {
  const std::uint64_t limit = microsecondsOf(seconds);
  std::uint64_t deadline = uptimeMicroseconds() + limit;
  hasSignOfLife_ = false;
  while (!isDone) {
    const int processed = sd_bus_process(bus_.get(), nullptr);
    if (processed < 0) failWith(processed);
    const std::uint64_t now = uptimeMicroseconds();
    if (hasSignOfLife_) deadline = now + limit;
    hasSignOfLife_ = false;
    if (now >= deadline) throw Error(Error::ServiceUnresponsive{seconds});
    if (cancellation_.isCancelled()) throw OperationCancelled();
    if (processed == 0) waitForEvent(deadline - now);
  }
}

void PackageKitConnection::waitForEvent(std::uint64_t microseconds) {
  std::uint64_t busDeadline = UINT64_MAX;  // of the monotonic clock
  sd_bus_get_timeout(bus_.get(), &busDeadline);
  if (busDeadline != UINT64_MAX) {
    const std::uint64_t now = uptimeMicroseconds();
    microseconds = std::min(microseconds, busDeadline > now ? busDeadline - now : 0);
  }
  const int events = checked(sd_bus_get_events(bus_.get()));
  std::array<pollfd, 2> waited{pollfd{sd_bus_get_fd(bus_.get()), static_cast<short>(events), 0},
                               pollfd{cancellation_.descriptor(), POLLIN, 0}};
  constexpr std::uint64_t longestWait = 1'000'000'000;
  ::poll(waited.data(), waited.size(), static_cast<int>((std::min(microseconds, longestWait) + 999) / 1000));
  if (cancellation_.isCancelled()) throw OperationCancelled();
}

}  // namespace quillo
