#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <cstdint>

#include "QuilloApp/Interface/InstanceSocket.h"
#include "QuilloApp/Interface/LaunchRequest.h"

namespace quillo {

/// Keeps the application to one instance a session: the first owns the bus name, as desktops activate applications, and
/// the display's lock, for starts that know no bus; each later one hands its request over and ends.
class SessionInstance : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  static constexpr const char* busName = "org.quillo.Quillo";

  explicit SessionInstance(QObject* parent = nullptr);

  enum class Outcome : std::uint8_t {
    first,
    handedOver,
    unanswered,  ///< the first instance does not answer
  };

  /// Claims the name, or hands the request to whoever has it.
  Outcome claim(LaunchRequest request);

 Q_SIGNALS:
  void requested(quillo::LaunchRequest request);
  /// The session's bus has gone, and with it the session.
  void sessionEnded();

 public Q_SLOTS:
  // The names are those of the bus interface.
  Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
  Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
  Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

 private Q_SLOTS:
  void busDisconnected();

 private:
  Outcome claimName(LaunchRequest request);

  InstanceSocket socket_;
};

}  // namespace quillo
