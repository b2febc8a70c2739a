#include "settings/json_reader.h"

#include <cmath>

namespace TarnClient {

template <class What>
std::optional<What> CJsonReader::Rejected(const QJsonValue& value) const {
  if (!value.isUndefined()) {
    Reject();
  }
  return std::nullopt;
}

std::optional<QString> CJsonReader::TextIn(const QJsonValue& value) const {
  if (!value.isString() || value.toString().size() > kLongestText) {
    return Rejected<QString>(value);
  }
  return value.toString();
}

std::optional<int> CJsonReader::Number(const char* key, int least, int most) const {
  const QJsonValue value = Value(key);
  const double number = value.toDouble(std::nan(""));
  if (!(number >= least && number <= most) || number != std::floor(number)) {
    return Rejected<int>(value);
  }
  return static_cast<int>(number);
}

std::optional<bool> CJsonReader::Flag(const char* key) const {
  const QJsonValue value = Value(key);
  if (!value.isBool()) {
    return Rejected<bool>(value);
  }
  return value.toBool();
}

QJsonArray CJsonReader::List(const char* key, int most) const {
  const QJsonValue value = Value(key);
  if (!value.isArray() || value.toArray().size() > most) {
    return Rejected<QJsonArray>(value).value_or(QJsonArray());
  }
  return value.toArray();
}

CJsonReader CJsonReader::Object(const char* key) const {
  return Element(Value(key));
}

CJsonReader CJsonReader::Element(const QJsonValue& value) const {
  if (!value.isObject()) {
    Rejected<bool>(value);
  }
  return CJsonReader(value.toObject(), sound_);
}

}  // namespace TarnClient
