#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

namespace TarnTest {

/// One of the programs in tools/cameras, on a port of its own; it ends with this object.
class CCameraTool {
 public:
  /// `password`: for the option --user.
  explicit CCameraTool(const char* script, const QStringList& arguments = {}, const QString& password = {});
  ~CCameraTool();

  /// What it said at its start; empty when it did not.
  const QJsonObject& Start() const { return start_; }
  int Port() const { return start_.value(QStringLiteral("port")).toInt(); }
  /// The answer to a command of the camera server's.
  QJsonObject Ask(const QString& command);
  /// The next line that it says; empty when none comes.
  QJsonObject NextLine();

 private:
  QProcess process_;
  QJsonObject start_;
};

}  // namespace TarnTest
