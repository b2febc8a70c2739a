#include "store/text_rules.h"

#include <QLocale>
#include <QTextCodec>
#include <QTime>

#include "plan_rules/names.h"
#include "plan_rules/plan_limits.h"
#include "store/store_error.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::FaultOfName;
using view_plugin_protocol::kLongestName;
using view_plugin_protocol::NameFault;

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

CStoreText RefusalOf(NameFault fault) {
  switch (fault) {
    case NameFault::None:
      break;
    case NameFault::Empty:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The name is empty.");
    case NameFault::TooLong:
      return {QT_TRANSLATE_NOOP("TarnHost::Store", "The name has more than %1 characters."),
              {QString::number(kLongestName)}};
    case NameFault::ForbiddenCharacter:
      return QT_TRANSLATE_NOOP("TarnHost::Store",
                               "The name must not contain any of these characters: \\ / : * ? \" < > |");
    case NameFault::ControlCharacter:
      return QT_TRANSLATE_NOOP("TarnHost::Store", "The name must not contain control characters.");
  }
  return {};
}

}  // namespace

QString CheckedName(const std::string& name) {
  const QString text = Decoded(name);
  const CStoreText refusal = RefusalOf(FaultOfName(text));
  if (!refusal.IsEmpty()) {
    throw CStoreError(CStoreError::kRefused, refusal);
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

std::string FoldedName(const std::string& name) {
  return Folded(ToQt(name));
}

}  // namespace TarnHost::Store
