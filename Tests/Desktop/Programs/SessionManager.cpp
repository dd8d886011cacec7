// A session manager for the tests. It prints where it is; at SIGUSR1 it asks its clients to save, as at the session's
// end, and prints how each of them answers.

#include <X11/ICE/ICElib.h>
#include <X11/SM/SMlib.h>
#include <poll.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

std::vector<SmsConn> clients;
volatile std::sig_atomic_t isEnding = 0;

Status registerClient(SmsConn client, SmPointer /*data*/, char* previousId) {
  std::free(previousId);
  char* id = SmsGenerateClientID(client);
  SmsRegisterClientReply(client, id);
  std::free(id);
  // The protocol begins with a save of its own.
  SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
  clients.push_back(client);
  return 1;
}

void saveDone(SmsConn client, SmPointer /*data*/, Bool isSaved) {
  std::printf("%s\n", isSaved != False ? "saved" : "failed");
  SmsSaveComplete(client);
}

void closeConnection(SmsConn client, SmPointer /*data*/, int count, char** reasons) {
  SmFreeReasons(count, reasons);
  std::erase(clients, client);
  IceConn connection = SmsGetIceConnection(client);
  SmsCleanUp(client);
  IceCloseConnection(connection);
}

Status welcome(SmsConn /*client*/, SmPointer /*data*/, unsigned long* mask, SmsCallbacks* callbacks,
               char** /*reason*/) {
  *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
          SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask | SmsSaveYourselfDoneProcMask |
          SmsCloseConnectionProcMask | SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask |
          SmsGetPropertiesProcMask;
  callbacks->register_client.callback = registerClient;
  callbacks->interact_request.callback = [](SmsConn, SmPointer, int) {};
  callbacks->interact_done.callback = [](SmsConn, SmPointer, Bool) {};
  callbacks->save_yourself_request.callback = [](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {};
  callbacks->save_yourself_phase2_request.callback = [](SmsConn client, SmPointer) { SmsSaveYourselfPhase2(client); };
  callbacks->save_yourself_done.callback = saveDone;
  callbacks->close_connection.callback = closeConnection;
  callbacks->set_properties.callback = [](SmsConn, SmPointer, int count, SmProp** properties) {
    for (int index = 0; index < count; ++index) SmFreeProperty(properties[index]);
    std::free(properties);
  };
  callbacks->delete_properties.callback = [](SmsConn, SmPointer, int, char**) {};
  callbacks->get_properties.callback = [](SmsConn client, SmPointer) { SmsReturnProperties(client, 0, nullptr); };
  return 1;
}

void saveAll() {
  isEnding = 0;
  for (SmsConn client : clients) SmsSaveYourself(client, SmSaveBoth, True, SmInteractStyleNone, False);
}

}  // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  std::signal(SIGUSR1, [](int) { isEnding = 1; });
  std::array<char, 256> error{};
  int count = 0;
  IceListenObj* listeners = nullptr;
  if (SmsInitialize(
          "Tests", "1", welcome, nullptr, [](char*) -> Bool { return True; }, error.size(), error.data()) == 0 ||
      IceListenForConnections(&count, &listeners, error.size(), error.data()) == 0) {
    std::fprintf(stderr, "%s\n", error.data());
    return 1;
  }
  for (int index = 0; index < count; ++index) {
    IceSetHostBasedAuthProc(listeners[index], [](char*) -> Bool { return True; });
  }
  std::printf("%s\n", IceComposeNetworkIdList(count, listeners));

  static std::vector<IceConn> connections;
  IceAddConnectionWatch(
      [](IceConn connection, IcePointer, Bool isOpening, IcePointer*) {
        isOpening != False ? connections.push_back(connection) : void(std::erase(connections, connection));
      },
      nullptr);
  for (;;) {
    if (isEnding != 0) saveAll();
    std::vector<pollfd> waited;
    for (int index = 0; index < count; ++index)
      waited.push_back({IceGetListenConnectionNumber(listeners[index]), POLLIN, 0});
    const std::vector<IceConn> open = connections;
    for (IceConn connection : open) waited.push_back({IceConnectionNumber(connection), POLLIN, 0});
    constexpr int interval = 50;  // a signal that comes before the wait does not end it
    if (::poll(waited.data(), waited.size(), interval) <= 0) continue;
    for (int index = 0; index < count; ++index) {
      IceAcceptStatus status{};
      if (waited[static_cast<std::size_t>(index)].revents != 0) IceAcceptConnection(listeners[index], &status);
    }
    for (std::size_t index = 0; index < open.size(); ++index) {
      const bool isReady = waited[static_cast<std::size_t>(count) + index].revents != 0;
      if (isReady && IceProcessMessages(open[index], nullptr, nullptr) == IceProcessMessagesIOError)
        IceCloseConnection(open[index]);
    }
  }
}
