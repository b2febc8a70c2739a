#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "devices/device_question.h"
#include "devices/device_records.h"

namespace TarnClient {

/// A preset that a camera is to turn to.
struct PresetOrder {
  QUrl device;  // where it is asked; see DeviceAddress()
  QString user, password;
  QUrl stream;  // one of the camera's, which tells it from the device's others
  int number = 0;
  QString name;  // as the site knows the preset
};

/// Which camera of a device sends this stream; null when none is known to.
const DeviceCamera* CameraOf(const DeviceAnswer& device, const QUrl& stream);
/// The preset of this name, else the one that the device itself calls by the number; null when there is neither: a
/// camera that turns elsewhere is worse than one that stays.
const DevicePreset* PresetOf(const DeviceCamera& camera, int number, const QString& name);

/// Turns cameras to their presets. A device is asked once what it has, however many of its cameras are to turn, and
/// again when that may have changed. Nothing is answered any more when it is destroyed. Thread: GUI; it waits for
/// nothing.
class CPresetCaller : public QObject {
  Q_OBJECT
 public:
  /// No failure: the camera has taken the order, or a later one. `words` are the device's own.
  using Then = std::function<void(std::optional<DeviceFailure> failure, const QString& words)>;

  explicit CPresetCaller(QObject* parent = nullptr) : QObject(parent) {}

  void SetPatience(int ms) { patience_ms_ = ms; }
  void SetAuthority(const QByteArray& pem) { authority_ = pem; }

  /// Of several orders for one camera the last one counts; one that waits meanwhile is left out.
  void Call(const PresetOrder& order, const Then& then);

 private:
  struct Waiting {
    PresetOrder order;
    Then then;
  };
  struct Known {
    DeviceAnswer answer;
    QElapsedTimer age;
  };

  void Ask(const PresetOrder& order);
  std::vector<Waiting> TakeWaiting(const QString& device);
  void SendWaiting(const QString& device);
  void Send(const Waiting& waiting, const DeviceAnswer& device);
  void OnSent(const Waiting& sent, std::optional<DeviceFailure> failure, const QString& words);
  void Forget(const QString& device, DeviceFailure failure);

  QHash<QString, Known> devices_;       // by address and user
  QSet<QString> asked_;                 // devices, likewise
  std::map<QString, Waiting> waiting_;  // by device and stream
  QSet<QString> turning_;               // likewise: they have not answered yet
  QByteArray authority_;
  int patience_ms_ = 8000;
};

}  // namespace TarnClient
