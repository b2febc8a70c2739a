#pragma once

#include <QString>
#include <exception>

namespace TarnHost::Store {

/// Why a call cannot be done, as a text for the user. Thrown inside the store, caught where its calls end.
class CStoreError : public std::exception {
 public:
  enum Kind { kRefused, kBusy, kReadOnly, kDamaged, kConnectionLost, kNotAnswering, kFailed };

  explicit CStoreError(const QString& text, Kind kind = kRefused) : text_(text), bytes_(text.toUtf8()), kind_(kind) {}

  /// What a user reads whenever a wait for the store was given up.
  static CStoreError NotAnswering(Kind kind = kNotAnswering) {
    return CStoreError(QStringLiteral("The service does not answer"), kind);
  }

  const QString& Text() const { return text_; }
  Kind GetKind() const { return kind_; }
  const char* what() const noexcept override { return bytes_.constData(); }

 private:
  QString text_;
  QByteArray bytes_;
  Kind kind_;
};

}  // namespace TarnHost::Store
