#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <cstdint>

namespace quillo {

/// What a start of the application asks for.
enum class LaunchRequest : std::uint8_t { open, background, capture, paste };

/// Keeps the application to one instance a session: the first owns the bus name, as desktops activate applications;
/// each later one hands its request over and ends. Where there is no bus, every start is the first.
class SessionInstance : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  static constexpr const char* busName = "org.quillo.Quillo";

  explicit SessionInstance(QObject* parent = nullptr) : QObject(parent) {}

  enum class Outcome : std::uint8_t {
    first,
    handedOver,
    unanswered,  ///< the first instance does not answer
  };

  /// Claims the name, or hands the request to whoever has it.
  Outcome claim(LaunchRequest request);

 Q_SIGNALS:
  Q_SCRIPTABLE void requested(quillo::LaunchRequest request);

 public Q_SLOTS:
  // The names are those of the bus interface.
  Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
  Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
  Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);
};

}  // namespace quillo
