#include "camera_tool.h"

#include <QElapsedTimer>
#include <QJsonDocument>

namespace TarnTest {

namespace {

constexpr int kPatienceMs = 20000;

}  // namespace

CCameraTool::CCameraTool(const char* script, const QStringList& arguments, const QString& password) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("CAMERAS_PASSWORD"), password);
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  const QString path = QStringLiteral(TARN_CAMERA_TOOLS "/") + QLatin1String(script);
  process_.start(QStringLiteral("/usr/bin/python3"), QStringList(path) + arguments);
  start_ = NextLine();
}

CCameraTool::~CCameraTool() {
  process_.closeWriteChannel();  // the tools end with their input
  if (!process_.waitForFinished(3000)) {
    process_.kill();
    process_.waitForFinished();
  }
}

QJsonObject CCameraTool::NextLine() {
  QElapsedTimer since;
  since.start();
  while (!process_.canReadLine() && !since.hasExpired(kPatienceMs) && process_.state() != QProcess::NotRunning) {
    process_.waitForReadyRead(100);
  }
  return QJsonDocument::fromJson(process_.readLine()).object();
}

QJsonObject CCameraTool::Ask(const QString& command) {
  process_.write(command.toUtf8() + '\n');
  process_.waitForBytesWritten(kPatienceMs);
  return NextLine();
}

}  // namespace TarnTest
