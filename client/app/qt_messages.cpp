#include "app/qt_messages.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <cstdio>

#include "marlog/marlog.h"

namespace TarnClient {

namespace {

// So begins what the platform without a display says about every window with a least size and every pop-up.
constexpr char kOffscreenNoise[] = "This plugin does not support ";

void Handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(QLatin1String(kOffscreenNoise))) {
    return;
  }
  const bool bad = type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg;
  marlog::Write("Qt", bad ? marlog::Warning : marlog::Info, "%s: %s", context.category, qUtf8Printable(message));
  if (bad) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
  }
}

}  // namespace

void InstallQtMessageHandler() {
  qInstallMessageHandler(&Handle);
}

void EnsureRuntimeFolder() {
  if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
    return;
  }
  const QString folder = QDir::temp().filePath(QStringLiteral("tarn-client-%1").arg(getuid()));
  QDir().mkpath(folder);
  QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
}

}  // namespace TarnClient
