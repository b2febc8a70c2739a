#pragma once

#include <QString>
#include <exception>

namespace TarnHost::Store {

/// Why a call cannot be done, as a text for the user. Thrown inside the store, caught where its calls end.
class CStoreError : public std::exception {
 public:
  enum Kind { kRefused, kBusy, kReadOnly, kNoRight, kDamaged, kNoRoom, kConnectionLost, kNotAnswering, kFailed };

  /// `words` are the database's own on it.
  explicit CStoreError(const QString& text, Kind kind = kRefused, const QString& words = QString())
      : text_(text), words_(words), bytes_(text.toUtf8()), kind_(kind) {}

  /// What a user reads whenever a wait for the store was abandoned.
  static CStoreError NotAnswering(Kind kind = kNotAnswering) {
    return CStoreError(QStringLiteral("The service does not answer"), kind);
  }

  const QString& Text() const { return text_; }
  /// For the log: the text, and what the database itself said.
  QString LogText() const { return words_.isEmpty() ? text_ : text_ + " (" + words_ + ')'; }
  const QString& Words() const { return words_; }
  Kind GetKind() const { return kind_; }
  const char* what() const noexcept override { return bytes_.constData(); }

 private:
  QString text_, words_;
  QByteArray bytes_;
  Kind kind_;
};

}  // namespace TarnHost::Store
