#include "log_capture.h"

#include <QRegularExpression>
#include <mutex>

#include "TarnHost/log_sink.h"

namespace TarnTest {

struct CLogCapture::Shared {
  std::mutex mutex;
  QStringList lines;
};

CLogCapture::CLogCapture() : shared_(std::make_shared<Shared>()) {
  TarnHost::LogSink::SetListener([shared = shared_](const QString& module, int level, const QString& line) {
    QString text = line;
    text.replace(QRegularExpression(QStringLiteral("\\(\\d+\\)\\]")), QStringLiteral("(#)]"));
    const std::lock_guard<std::mutex> lock(shared->mutex);
    shared->lines.append(QStringLiteral("%1 %2 %3").arg(module).arg(level).arg(text));
  });
}

CLogCapture::~CLogCapture() {
  TarnHost::LogSink::SetListener({});
}

QStringList CLogCapture::Lines() const {
  const std::lock_guard<std::mutex> lock(shared_->mutex);
  return shared_->lines;
}

void CLogCapture::Clear() {
  const std::lock_guard<std::mutex> lock(shared_->mutex);
  shared_->lines.clear();
}

}  // namespace TarnTest
