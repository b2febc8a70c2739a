#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "app/client_options.h"
#include "app/client_session.h"
#include "app/display_check.h"
#include "app/given_password.h"
#include "app/hide_passwords.h"
#include "app/qt_messages.h"
#include "app/quit_on_signal.h"
#include "app/store_tool.h"
#include "help/about_text.h"
#include "qt/sharp_screens.h"

namespace {

constexpr int kCannotFollow = 2;
constexpr char kName[] = "tarn-client";

int Refuse(const QString& line) {
  std::fprintf(stderr, "tarn-client: %s\n", qUtf8Printable(QString(line).replace(QLatin1Char('\n'), QLatin1Char(' '))));
  return kCannotFollow;
}

QStringList Arguments(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) {
    arguments << QString::fromLocal8Bit(argv[i]);
  }
  return arguments;
}

int ShowHelp(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  std::fputs(qUtf8Printable(TarnClient::ClientOptions::HelpText()), stdout);
  return 0;
}

int ShowVersions() {
  std::fputs(qUtf8Printable(TarnClient::VersionText()), stdout);
  return 0;
}

// By value: what is given to the session has no copy of a password left behind.
int RunClient(int argc, char** argv, TarnClient::ClientOptions options) {
  TarnQt::UseSharpScreens();
  QApplication application(argc, argv);
  QCoreApplication::setApplicationName(QString::fromLatin1(kName));
  const TarnClient::CQuitOnSignal quit_on_signal;
  TarnClient::CClientSession session(std::move(options));
  QString error;
  int code = EXIT_SUCCESS;
  if (session.Start(&error)) {
    code = QApplication::exec();
  } else if (!error.isEmpty()) {
    code = Refuse(error);
  }
  if (!session.End()) {
    std::fflush(nullptr);
    ::_exit(code);  // a thread that still waits for the store uses what destructors would take from it
  }
  return code;
}

int RunTool(int argc, char** argv, const TarnClient::ClientOptions& options) {
  const QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(QString::fromLatin1(kName));
  return TarnClient::RunStoreTool(options);
}

}  // namespace

int main(int argc, char** argv) {
  QString error;
  const QStringList arguments = Arguments(argc, argv);
  TarnClient::HidePasswords(argc, argv);
  // Before the application object, so that help and refusals need no display.
  auto options = TarnClient::ClientOptions::Parse(arguments, &error);
  if (!options) {
    return Refuse(error);
  }
  options->password = TarnClient::TakeGivenPassword(options->password_descriptor, &error);
  if (!error.isEmpty()) {
    return Refuse(error);
  }
  if (options->help) {
    return ShowHelp(argc, argv);
  }
  if (options->version) {
    return ShowVersions();
  }
  if (options->WantsStoreTool()) {
    return RunTool(argc, argv, *options);
  }
  TarnClient::InstallQtMessageHandler();
  TarnClient::EnsureRuntimeFolder();
  error = TarnClient::WhyNoDisplay();
  if (!error.isEmpty()) {
    return Refuse(error);
  }
  return RunClient(argc, argv, std::move(*options));
}
