#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <optional>

namespace TarnClient {

/// Reads values of a JSON object that anybody may have edited. What is not there is empty; what is of another type, out
/// of its range or too long is empty as well, and makes the reader unsound. A plain value.
class CJsonReader {
 public:
  static constexpr int kLongestText = 4096;

  CJsonReader(QJsonObject json, bool* sound) : json_(std::move(json)), sound_(sound) {}

  std::optional<QString> Text(const char* key) const { return TextIn(Value(key)); }
  std::optional<int> Number(const char* key, int least, int most) const;
  std::optional<bool> Flag(const char* key) const;
  /// At most `most` elements; empty when there is none.
  QJsonArray List(const char* key, int most) const;
  /// An object without keys when there is none.
  CJsonReader Object(const char* key) const;
  /// An element of a list, as an object.
  CJsonReader Element(const QJsonValue& value) const;
  std::optional<QString> TextIn(const QJsonValue& value) const;
  /// What was read is of the right type, but cannot be.
  void Reject() const { *sound_ = false; }

 private:
  QJsonValue Value(const char* key) const { return json_.value(QLatin1String(key)); }
  template <class What>
  std::optional<What> Rejected(const QJsonValue& value) const;

  QJsonObject json_;
  bool* sound_;
};

}  // namespace TarnClient
