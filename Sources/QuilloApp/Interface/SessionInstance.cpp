#include "QuilloApp/Interface/SessionInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace quillo {
namespace {

constexpr int answerTimeout = 5000;  ///< milliseconds

QString objectPath() {
  return QStringLiteral("/org/quillo/Quillo");
}

QDBusMessage callFor(LaunchRequest request) {
  const bool isAction = request == LaunchRequest::capture || request == LaunchRequest::paste;
  QDBusMessage call = QDBusMessage::createMethodCall(
      QString::fromLatin1(SessionInstance::busName), objectPath(), QStringLiteral("org.freedesktop.Application"),
      isAction ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
  if (isAction) {
    const bool isCapture = request == LaunchRequest::capture;
    call << (isCapture ? QStringLiteral("capture") : QStringLiteral("paste")) << QVariantList();
  }
  call << QVariantMap();
  return call;
}

}  // namespace

SessionInstance::Outcome SessionInstance::claim(LaunchRequest request) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return Outcome::first;
  // The object before the name, so that whoever finds the name finds the object too.
  bus.registerObject(objectPath(), this, QDBusConnection::ExportScriptableSlots);
  if (bus.registerService(QString::fromLatin1(busName))) return Outcome::first;
  // A login that starts the application in the background wants nothing of the one that runs.
  if (request == LaunchRequest::background) return Outcome::handedOver;
  const QDBusMessage reply = bus.call(callFor(request), QDBus::Block, answerTimeout);
  return reply.type() == QDBusMessage::ReplyMessage ? Outcome::handedOver : Outcome::unanswered;
}

void SessionInstance::Activate(const QVariantMap& /*platformData*/) {
  Q_EMIT requested(LaunchRequest::open);
}

void SessionInstance::Open(const QStringList& /*uris*/, const QVariantMap& /*platformData*/) {
  Q_EMIT requested(LaunchRequest::open);
}

void SessionInstance::ActivateAction(const QString& name, const QVariantList& /*parameter*/,
                                     const QVariantMap& /*platformData*/) {
  if (name == QStringLiteral("capture")) Q_EMIT requested(LaunchRequest::capture);
  if (name == QStringLiteral("paste")) Q_EMIT requested(LaunchRequest::paste);
}

}  // namespace quillo
