#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace TarnClient {

/// Brings the plan data up in the order the plug-in asks for, and tells when its trees can be shown. Thread: GUI.
class CPlanDataLoader : public QObject {
  Q_OBJECT
 public:
  explicit CPlanDataLoader(QObject* parent = nullptr);

  /// Once, after a user has logged in.
  void Start();

 Q_SIGNALS:
  /// Repeated while the data is on its way.
  void SignalWaiting(int seconds);
  /// Once.
  void SignalReady();

 private:
  void Poll();

  QTimer poll_;
  QElapsedTimer since_start_;
};

}  // namespace TarnClient
