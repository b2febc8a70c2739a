#include "camera_server.h"

#include <signal.h>

#include <QJsonDocument>

namespace TarnDemo {

namespace {

constexpr int kAnswerMs = 20000;  // the first start encodes its pictures
constexpr int kEndMs = 2000;

}  // namespace

CCameraServer::CCameraServer(const QStringList& options, const QString& password) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("CAMERAS_PASSWORD"), password);
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QStringLiteral("/usr/bin/python3"),
                 QStringList{QStringLiteral(TARN_CAMERA_SERVER), QStringLiteral("--until-eof")} + options);
  if (process_.waitForStarted()) {
    port_ = Tell(QString())[QStringLiteral("port")].toInt();
  }
}

CCameraServer::~CCameraServer() {
  process_.closeWriteChannel();
  if (process_.state() != QProcess::NotRunning && !process_.waitForFinished(kEndMs)) {
    Kill();
  }
}

QString CCameraServer::Url(int camera, const char* stream, const char* scheme) const {
  return QStringLiteral("%1://127.0.0.1:%2/%3/%4")
      .arg(QLatin1String(scheme), QString::number(port_), QString::number(camera), QLatin1String(stream));
}

QJsonObject CCameraServer::Tell(const QString& command) {
  if (!command.isEmpty()) {
    process_.write(command.toUtf8() + '\n');
  }
  while (!process_.canReadLine() && process_.waitForReadyRead(kAnswerMs)) {
  }
  return QJsonDocument::fromJson(process_.readLine()).object();
}

void CCameraServer::Kill() {
  if (process_.state() != QProcess::NotRunning) {
    process_.kill();
    process_.waitForFinished();
  }
}

void CCameraServer::Freeze(bool on) {
  int signal = SIGCONT;
  if (on) {
    signal = SIGSTOP;
  }
  ::kill(static_cast<pid_t>(process_.processId()), signal);
}

}  // namespace TarnDemo
