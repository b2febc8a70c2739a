#pragma once

#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QStringList>

namespace TarnTest {

/// One run of the built client in a home of its own, without a display.
class CClientRun {
 public:
  /// Starts the program; `home` holds its data and log. An empty value takes a variable out of its environment.
  CClientRun(const QString& home, const QStringList& arguments, const QMap<QString, QString>& environment = {});
  ~CClientRun();

  /// Asks the program to go, as a log-out of the desktop does.
  void Terminate() { process_.terminate(); }
  /// Waits for the end, but not for long.
  bool HasEnded(int ms) { return process_.state() == QProcess::NotRunning || process_.waitForFinished(ms); }
  /// False when the program does not end within 90 seconds.
  bool WaitForEnd();
  qint64 ProcessId() const { return process_.processId(); }
  int ExitCode() const { return process_.exitCode(); }
  QString Errors() const { return errors_; }
  QStringList Output() const { return output_; }
  /// The last line of the output; an empty object when it is no JSON object.
  QJsonObject State() const;
  /// The log as it stands.
  QString Log() const;

 private:
  const QString log_file_;
  QProcess process_;
  QString errors_;
  QStringList output_;
};

}  // namespace TarnTest
