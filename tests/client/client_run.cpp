#include "client_run.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcessEnvironment>
#include <QUuid>

namespace TarnTest {

namespace {

constexpr int kEndMs = 90000;

}  // namespace

CClientRun::CClientRun(const QString& home, const QStringList& arguments, const QMap<QString, QString>& changes)
    : log_file_(QDir(home).filePath(QUuid::createUuid().toString(QUuid::Id128) + ".log")) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_QPA_PLATFORM", "offscreen");
  environment.insert("XDG_DATA_HOME", home);
  environment.insert("XDG_CONFIG_HOME", home);
  for (auto change = changes.begin(); change != changes.end(); ++change) {
    environment.remove(change.key());
    if (!change.value().isEmpty()) {
      environment.insert(change.key(), change.value());
    }
  }
  process_.setProcessEnvironment(environment);
  process_.start(QStringLiteral(TARN_CLIENT_PROGRAM), arguments + QStringList{"--log", log_file_});
}

CClientRun::~CClientRun() {
  if (process_.state() != QProcess::NotRunning) {
    process_.kill();
    process_.waitForFinished();
  }
}

bool CClientRun::WaitForEnd() {
  if (!HasEnded(kEndMs) || process_.exitStatus() != QProcess::NormalExit) {
    return false;
  }
  errors_ = QString::fromLocal8Bit(process_.readAllStandardError());
  output_ = QString::fromUtf8(process_.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
  return true;
}

QJsonObject CClientRun::State() const {
  return output_.isEmpty() ? QJsonObject() : QJsonDocument::fromJson(output_.last().toUtf8()).object();
}

QString CClientRun::Log() const {
  QFile file(log_file_);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace TarnTest
