#include "marlog/marlog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>
#include <vector>

#include "TarnHost/log_sink.h"
#include "marlog/log_file.h"

namespace {

using TarnHost::LogSink;

struct SinkState {
  std::mutex mutex;
  TarnHost::LogFile file;
  bool to_stderr = false;
  std::shared_ptr<const LogSink::Listener> listener;
};

// Never destroyed: late lines of other static objects must still find it.
SinkState& State() {
  static auto* state = new SinkState;
  return *state;
}

QString Format(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, arguments);
  std::vector<char> buffer(static_cast<size_t>(std::max(length, 0)) + 1);
  if (length > 0) {
    std::vsnprintf(buffer.data(), buffer.size(), format, again);
  }
  va_end(again);
  return QString::fromUtf8(buffer.data());
}

// One entry stays one line, whatever a name holds.
QString OneLine(QString text) {
  return text.replace(QLatin1Char('\n'), QLatin1String("\\n")).replace(QLatin1Char('\r'), QLatin1String("\\r"));
}

char MarkOf(int level) {
  switch (level) {
    case marlog::Info:
      return 'I';
    case marlog::Warning:
      return 'W';
    case marlog::Error:
      return 'E';
    default:
      return '?';
  }
}

QByteArray Entry(const QString& module, int level, const QString& line) {
  const QString time = QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
  return QStringLiteral("%1 %2 %3 %4\n").arg(time, QString(QLatin1Char(MarkOf(level))), module, line).toUtf8();
}

// Only system calls under the mutex: what Qt has to say about a file comes here again.
void Put(const QString& module, int level, const QString& line) {
  SinkState& state = State();
  const QByteArray entry = Entry(module, level, line);
  std::shared_ptr<const LogSink::Listener> listener;
  {
    const std::lock_guard<std::mutex> lock(state.mutex);
    listener = state.listener;
    if (state.file.IsOpen()) {
      state.file.Append(entry);
    } else if (state.to_stderr) {
      std::fwrite(entry.constData(), 1, static_cast<size_t>(entry.size()), stderr);
    }
  }
  if (listener && *listener) {
    (*listener)(module, level, line);
  }
}

}  // namespace

namespace marlog {

void Write(const char* module, int level, const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const QString line = OneLine(Format(format, arguments));
  va_end(arguments);
  Put(QString::fromUtf8(module), level, line);
}

}  // namespace marlog

namespace TarnHost {

bool LogSink::OpenFile(const QString& path) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  const QByteArray name = QFile::encodeName(path);
  SinkState& state = State();
  const std::lock_guard<std::mutex> lock(state.mutex);
  const bool open = state.file.Open(name);
  state.to_stderr = !open;
  return open;
}

void LogSink::SetListener(Listener listener) {
  SinkState& state = State();
  auto kept = std::make_shared<const Listener>(std::move(listener));
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.listener.swap(kept);
}

void LogSink::Close() {
  SinkState& state = State();
  const std::lock_guard<std::mutex> lock(state.mutex);
  state.file.Close();
  state.to_stderr = false;
}

}  // namespace TarnHost
