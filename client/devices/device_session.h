#pragma once

#include <QDateTime>
#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>
#include <functional>
#include <optional>

#include "devices/device_records.h"
#include "devices/soap_message.h"

class QNetworkReply;

namespace TarnClient {

/// What became of a call to a device.
struct DeviceCallResult {
  std::optional<DeviceFailure> failure;
  QString words;  // the device's own, to a failure
  XmlNode body;   // the first element of its answer's body
};

/// Calls the services of one device, for one user. Nothing is answered any more when it is destroyed. Thread: GUI; it
/// waits for nothing.
class CDeviceSession : public QObject {
 public:
  using Then = std::function<void(const DeviceCallResult&)>;

  CDeviceSession(QString user, QString password, QObject* parent = nullptr);

  /// How long a call may take.
  void SetPatience(int ms) { patience_ms_ = ms; }
  /// Alone vouches for devices that are asked by https (PEM); blank: those that the system trusts.
  void SetAuthority(const QByteArray& pem);
  /// The device's clock now, which the user's token is made by.
  void SetDeviceTime(const QDateTime& device_time);
  qint64 ClockOffsetMs() const { return clock_offset_ms_; }

  /// Asks as the user, or as no one in particular when there is none.
  void Call(const QUrl& service, const SoapBody& body, const Then& then);
  void CallAsNoOne(const QUrl& service, const SoapBody& body, const Then& then);

 private:
  struct Request {
    QUrl service;
    QByteArray message;
    Then then;
  };
  /// `login`: what the device has asked for by HTTP; empty when it has not.
  void Send(const Request& request, const QByteArray& login = {});
  void OnFinished(QNetworkReply* reply, const Request& request, bool has_logged_in);
  std::optional<UserToken> Token() const;

  const QString user_, password_;
  QNetworkAccessManager network_{this};
  QByteArray authority_;
  int patience_ms_ = 8000;
  qint64 clock_offset_ms_ = 0;  // of the device's clock to ours
};

}  // namespace TarnClient
