#include "store/text_rules.h"

#include <QLocale>
#include <QTime>

#include "plan_rules/names.h"
#include "plan_rules/plan_limits.h"
#include "qt/text_decoding.h"
#include "store/store_error.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

using view_plugin_protocol::FaultOfName;
using view_plugin_protocol::kLongestName;
using view_plugin_protocol::NameFault;

const char kTimeFormat[] = "HH:mm:ss";

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

std::optional<QString> TextOfBytes(const std::string& bytes) {
  return TarnQt::DecodedText("UTF-8", QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
}

QString CheckedText(const std::string& bytes) {
  const std::optional<QString> text = TextOfBytes(bytes);
  if (!text) {
    throw CStoreError(CStoreError::kRefused, kNoText);
  }
  return *text;
}

QString CheckedName(const std::string& name) {
  const std::optional<QString> text = TextOfBytes(name);
  if (!text) {
    throw CStoreError(CStoreError::kRefused, QT_TRANSLATE_NOOP("TarnHost::Store", "The name is not valid text."));
  }
  const CStoreText refusal = RefusalOf(FaultOfName(*text));
  if (!refusal.IsEmpty()) {
    throw CStoreError(CStoreError::kRefused, refusal);
  }
  return *text;
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
