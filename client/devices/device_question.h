#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <initializer_list>
#include <memory>

#include "devices/device_answers.h"
#include "devices/device_records.h"
#include "devices/device_session.h"

namespace TarnClient {

/// Asks a device what it has: its cameras, their streams and their presets. One question at a time; another one takes
/// its place. Thread: GUI; it waits for nothing.
class CDeviceQuestion : public QObject {
  Q_OBJECT
 public:
  explicit CDeviceQuestion(QObject* parent = nullptr);
  ~CDeviceQuestion() override;

  /// How long each of its calls may take; all together may take eight times as long.
  void SetPatience(int ms) { patience_ms_ = ms; }
  /// See CDeviceSession::SetAuthority().
  void SetAuthority(const QByteArray& pem) { authority_ = pem; }

  /// `address` is what DeviceAddress() makes of the user's text. Answered once, unless cancelled.
  void Ask(const QUrl& address, const QString& user, const QString& password);
  void Cancel();
  bool IsAsking() const { return session_ != nullptr; }

 Q_SIGNALS:
  void SignalAnswered(const TarnClient::DeviceAnswer& answer);
  /// `words` are the device's own and may be empty.
  void SignalFailed(TarnClient::DeviceFailure failure, const QString& words);

 private:
  struct Running;
  using Then = std::function<void(const DeviceCallResult&)>;

  // Each step asks for one thing and goes on to the next.
  void AskTime();
  void AskServices();
  void AskCapabilities();
  void AskInformation();
  void AskName();
  void AskProfiles();
  void AskProfiles1();
  void OnProfiles(const std::vector<DeviceProfile>& profiles);
  void AskStream(size_t lens, size_t stream);
  void OnStream(size_t lens, size_t stream, const QUrl& stream_address);
  void AskPresets(size_t lens);
  void Answer();

  /// `then` is not called once the question is over, nor for a failure that ends it; `mild` failures do not.
  void Call(const QUrl& service, const SoapBody& body, std::initializer_list<DeviceFailure> mild, const Then& then);
  void Fail(DeviceFailure failure, const QString& words);

  int patience_ms_ = 8000;
  QByteArray authority_;
  QTimer deadline_{this};
  std::unique_ptr<CDeviceSession> session_;  // while it is asking
  std::unique_ptr<Running> running_;         // likewise
};

}  // namespace TarnClient

Q_DECLARE_METATYPE(TarnClient::DeviceAnswer)
Q_DECLARE_METATYPE(TarnClient::DeviceFailure)
