#pragma once

#include <QObject>

namespace TarnClient {

/// Ends the event loop in an orderly way when the session manager or the shell asks the program to go (SIGTERM, SIGINT,
/// SIGHUP). Who asks a second time (SIGTERM, SIGINT) ends the program at once, whatever it is doing. One a process.
/// Thread: GUI.
class CQuitOnSignal : public QObject {
  Q_OBJECT
 public:
  explicit CQuitOnSignal(QObject* parent = nullptr);
  ~CQuitOnSignal() override;

 private:
  void OnSignal();

  int reading_end_ = -1;
};

}  // namespace TarnClient
