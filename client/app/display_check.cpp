#include "app/display_check.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>
#include <cstring>

namespace TarnClient {

namespace {

constexpr unsigned kAnswerSeconds = 10;

int report_end = -1;

// What the platform says first is the cause; the rest is advice about the installation.
void Report(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type != QtFatalMsg && (!context.category || std::strncmp(context.category, "qt.qpa", 6) != 0)) {
    return;
  }
  const QByteArray line = message.section(QLatin1Char('\n'), 0, 0).trimmed().toUtf8() + '\n';
  const ssize_t written = ::write(report_end, line.constData(), static_cast<size_t>(line.size()));
  static_cast<void>(written);
}

[[noreturn]] void OpenDisplay(int report) {
  report_end = report;
  const rlimit no_core{0, 0};
  ::setrlimit(RLIMIT_CORE, &no_core);
  ::alarm(kAnswerSeconds);
  qunsetenv("SESSION_MANAGER");  // or the desktop would take it for a client that has crashed
  qInstallMessageHandler(&Report);
  char name[] = "tarn-client";
  char* arguments[] = {name, nullptr};
  int count = 1;
  const QGuiApplication application(count, arguments);
  ::_exit(0);
}

QString ReadLine(int report) {
  QByteArray text;
  char part[256];
  for (ssize_t got = 0; (got = ::read(report, part, sizeof(part))) > 0;) {
    text.append(part, static_cast<int>(got));
  }
  return QString::fromUtf8(text.left(text.indexOf('\n')));
}

}  // namespace

QString WhyNoDisplay() {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) {
    return QString();  // the start itself will show
  }
  const pid_t child = ::fork();
  if (child == 0) {
    OpenDisplay(ends[1]);
  }
  ::close(ends[1]);
  const QString reason = ReadLine(ends[0]);
  ::close(ends[0]);
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || (WIFEXITED(status) && WEXITSTATUS(status) == 0)) {
    return QString();
  }
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) {
    return QStringLiteral("the display does not answer");
  }
  return QStringLiteral("no display can be used: %1").arg(reason);
}

}  // namespace TarnClient
