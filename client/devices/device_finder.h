#pragma once

#include <QElapsedTimer>
#include <QHostAddress>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>
#include <memory>
#include <vector>

#include "devices/device_records.h"

class QUdpSocket;

namespace TarnClient {

/// Searches the networks of this machine for cameras: it asks all at once and listens for a few seconds to who answers.
/// Thread: GUI; it waits for nothing.
class CDeviceFinder : public QObject {
  Q_OBJECT
 public:
  explicit CDeviceFinder(QObject* parent = nullptr);
  ~CDeviceFinder() override;

  /// How long it listens.
  void SetPatience(int ms) { patience_ms_ = ms; }

  /// Begins again when it is searching. False when no network could be asked; then nothing is signalled.
  bool Find();
  /// The same, asking this machine alone.
  bool FindAt(const QHostAddress& address, quint16 port);
  /// Without a signal.
  void Stop();
  bool IsFinding() const { return !sockets_.empty(); }

 Q_SIGNALS:
  /// Once for each device.
  void SignalFound(const TarnClient::DeviceFound& device);
  void SignalFinished();

 private:
  bool Begin(std::vector<std::unique_ptr<QUdpSocket>> sockets, const QHostAddress& address, quint16 port);
  bool Ask();
  void Tick();
  void Read(QUdpSocket& socket);
  void Report(const DeviceFound& device);

  std::vector<std::unique_ptr<QUdpSocket>> sockets_;  // one a network, while it is searching
  QHostAddress address_;
  quint16 port_ = 0;
  QStringList questions_;
  QSet<QString> known_;  // ids of devices that were signalled
  QTimer tick_{this};
  QElapsedTimer since_;
  int patience_ms_ = 4000;
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::DeviceFound)
