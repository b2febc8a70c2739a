#include "store/text_rules.h"

#include <QLocale>
#include <QTextCodec>
#include <QTime>
#include <algorithm>

#include "store/store_error.h"

namespace TarnHost::Store {
namespace {

constexpr int kLongestName = 256;
const char kTimeFormat[] = "HH:mm:ss";

QString Decoded(const std::string& bytes) {
  QTextCodec::ConverterState state;
  const QString text =
      QTextCodec::codecForName("UTF-8")->toUnicode(bytes.data(), static_cast<int>(bytes.size()), &state);
  if (state.invalidChars > 0 || state.remainingChars > 0) {
    throw CStoreError(CStoreError::kRefused, QT_TRANSLATE_NOOP("TarnHost::Store", "The name is not valid text."));
  }
  return text;
}

bool IsForbidden(QChar c) {
  return QStringLiteral("\\/:*?\"<>|").contains(c);
}
bool IsControl(QChar c) {
  return c.category() == QChar::Other_Control;
}

}  // namespace

QString CheckedName(const std::string& name) {
  const QString text = Decoded(name);
  if (text.trimmed().isEmpty()) {
    throw CStoreError(CStoreError::kRefused, QT_TRANSLATE_NOOP("TarnHost::Store", "The name is empty."));
  }
  if (text.size() > kLongestName) {
    throw CStoreError(CStoreError::kRefused,
                      {QT_TRANSLATE_NOOP("TarnHost::Store", "The name has more than %1 characters."),
                       {QString::number(kLongestName)}});
  }
  if (std::any_of(text.begin(), text.end(), IsForbidden)) {
    throw CStoreError(
        CStoreError::kRefused,
        QT_TRANSLATE_NOOP("TarnHost::Store", "The name must not contain any of these characters: \\ / : * ? \" < > |"));
  }
  if (std::any_of(text.begin(), text.end(), IsControl)) {
    throw CStoreError(CStoreError::kRefused,
                      QT_TRANSLATE_NOOP("TarnHost::Store", "The name must not contain control characters."));
  }
  return text;
}

QString CheckedTime(const std::string& time) {
  const QTime parsed = QTime::fromString(ToQt(time), kTimeFormat);
  if (!parsed.isValid()) {
    throw CStoreError(CStoreError::kRefused,
                      {QT_TRANSLATE_NOOP("TarnHost::Store", "\"%1\" is not a time of day."), {ToQt(time)}});
  }
  return QLocale::c().toString(parsed, kTimeFormat);
}

QString TimeOrNothing(const std::string& time) {
  return QTime::fromString(ToQt(time), kTimeFormat).isValid() ? CheckedTime(time) : QString();
}

int32_t SecondOfDay(const QString& time) {
  if (time.isEmpty()) {
    return -1;  // most plans; parsing is slow
  }
  const QTime parsed = QTime::fromString(time, kTimeFormat);
  return parsed.isValid() ? parsed.msecsSinceStartOfDay() / 1000 : -1;
}

std::string Folded(const QString& text) {
  // By way of capitals, which alone tell that one letter may be written as two.
  return text.normalized(QString::NormalizationForm_C).toUpper().toCaseFolded().toStdString();
}

}  // namespace TarnHost::Store
