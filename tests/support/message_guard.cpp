#include "message_guard.h"

#include <QtGlobal>
#include <algorithm>
#include <mutex>

namespace TarnTest {

namespace {

struct Caught {
  std::mutex mutex;
  QtMessageHandler before = nullptr;
  QStringList expected, messages;
};

Caught& TheCaught() {
  static Caught caught;
  return caught;
}

void Note(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  Caught& caught = TheCaught();
  QtMessageHandler before = nullptr;
  {
    const std::lock_guard<std::mutex> lock(caught.mutex);
    before = caught.before;
    const bool expected = std::any_of(caught.expected.cbegin(), caught.expected.cend(),
                                      [&text](const QString& part) { return text.contains(part); });
    if (type != QtDebugMsg && type != QtInfoMsg && !expected) {
      caught.messages.append(text);
    }
  }
  if (before) {
    before(type, context, text);
  }
}

}  // namespace

CMessageGuard::CMessageGuard() {
  const std::lock_guard<std::mutex> lock(TheCaught().mutex);
  // What the platform without a screen can't do is no fault of the program.
  TheCaught().expected = QStringList(QStringLiteral("This plugin does not support"));
  TheCaught().messages.clear();
  TheCaught().before = qInstallMessageHandler(Note);
}

CMessageGuard::~CMessageGuard() {
  const std::lock_guard<std::mutex> lock(TheCaught().mutex);
  qInstallMessageHandler(TheCaught().before);
}

void CMessageGuard::Expect(const QString& part) {
  const std::lock_guard<std::mutex> lock(TheCaught().mutex);
  TheCaught().expected.append(part);
}

QStringList CMessageGuard::Unexpected() const {
  const std::lock_guard<std::mutex> lock(TheCaught().mutex);
  return TheCaught().messages;
}

}  // namespace TarnTest
