#include "QuilloApp/Interface/SessionInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QStandardPaths>
#include <algorithm>
#include <cctype>
#include <string>

namespace quillo {
namespace {

constexpr int answerTimeout = 5000;  ///< milliseconds

QString objectPath() {
  return QStringLiteral("/org/quillo/Quillo");
}

/// One for each display, because a display has the shortcuts and the clipboard.
std::filesystem::path lockPath() {
  std::string display = qEnvironmentVariable("DISPLAY").toStdString();
  if (const auto screen = display.rfind('.'); screen != std::string::npos && screen > display.rfind(':'))
    display.resize(screen);
  std::ranges::replace_if(display, [](unsigned char character) { return std::isalnum(character) == 0; }, '-');
  const QString directory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return std::filesystem::path(directory.toStdString()) / (std::string(SessionInstance::busName) + display);
}

QDBusMessage callFor(LaunchRequest request) {
  const bool isAction = request == LaunchRequest::capture || request == LaunchRequest::paste;
  QDBusMessage call = QDBusMessage::createMethodCall(
      QString::fromLatin1(SessionInstance::busName), objectPath(), QStringLiteral("org.freedesktop.Application"),
      isAction ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
  const std::string_view name = launchRequestName(request);
  if (isAction) call << QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())) << QVariantList();
  call << QVariantMap();
  return call;
}

}  // namespace

SessionInstance::SessionInstance(QObject* parent) : QObject(parent), socket_(lockPath()) {
  connect(&socket_, &InstanceSocket::requested, this, &SessionInstance::requested);
}

SessionInstance::Outcome SessionInstance::claim(LaunchRequest request) {
  const Outcome outcome = claimName(request);
  if (outcome != Outcome::first) return outcome;
  switch (socket_.claim(request, answerTimeout)) {
    case InstanceSocket::Outcome::first:
    case InstanceSocket::Outcome::unavailable: return Outcome::first;
    case InstanceSocket::Outcome::handedOver: return Outcome::handedOver;
    case InstanceSocket::Outcome::unanswered: break;
  }
  return Outcome::unanswered;
}

SessionInstance::Outcome SessionInstance::claimName(LaunchRequest request) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return Outcome::first;
  bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
              QStringLiteral("Disconnected"), this, SLOT(busDisconnected()));
  // The object before the name, so that whoever finds the name finds the object too.
  bus.registerObject(objectPath(), this, QDBusConnection::ExportScriptableSlots);
  if (bus.registerService(QString::fromLatin1(busName))) return Outcome::first;
  // A login that starts the application in the background wants nothing of the one that runs.
  if (request == LaunchRequest::background) return Outcome::handedOver;
  const QDBusMessage reply = bus.call(callFor(request), QDBus::Block, answerTimeout);
  return reply.type() == QDBusMessage::ReplyMessage ? Outcome::handedOver : Outcome::unanswered;
}

void SessionInstance::busDisconnected() {
  Q_EMIT sessionEnded();
}

void SessionInstance::Activate(const QVariantMap& /*platformData*/) {
  Q_EMIT requested(LaunchRequest::open);
}

void SessionInstance::Open(const QStringList& /*uris*/, const QVariantMap& /*platformData*/) {
  Q_EMIT requested(LaunchRequest::open);
}

void SessionInstance::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                     const QVariantMap& /*platformData*/) {
  const auto request = launchRequest(name.toStdString());
  if (request == LaunchRequest::capture || request == LaunchRequest::paste) Q_EMIT requested(*request);
}

}  // namespace quillo
