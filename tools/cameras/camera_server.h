#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QStringList>
#include <string>

namespace TarnDemo {

/// The cameras of tools/cameras/server.py as a process of its own, which ends with this object. Thread: one.
class CCameraServer {
 public:
  /// Starts it with these options, and waits until it listens; see IsRunning(). `password`: for the option --user.
  explicit CCameraServer(const QStringList& options = {}, const QString& password = {});
  ~CCameraServer();
  CCameraServer(const CCameraServer&) = delete;
  CCameraServer& operator=(const CCameraServer&) = delete;

  bool IsRunning() const { return port_ > 0; }
  int Port() const { return port_; }
  qint64 ProcessId() const { return process_.processId(); }
  /// `stream`: "main" or "sub".
  QString Url(int camera, const char* stream = "main", const char* scheme = "rtsp") const;
  /// Sends a command, and waits for its answer.
  QJsonObject Tell(const QString& command);
  void Kill();
  /// Stops the process in the middle of what it does, or lets it go on.
  void Freeze(bool on);

 private:
  QProcess process_;
  int port_ = 0;
};

}  // namespace TarnDemo
