#pragma once

#include <QString>
#include <exception>

#include "LyraPluginManager/error_kind.h"
#include "store/store_text.h"

namespace TarnHost::Store {

/// Why a call cannot be done, as a text for the user. Thrown inside the store, caught where its calls end.
class CStoreError : public std::exception {
 public:
  enum Kind {
    // What was asked for cannot be.
    kGone,
    kChanged,
    kNotPermitted,
    kRefused,
    kTooLarge,
    // The store cannot do it.
    kBusy,
    kReadOnly,
    kNoRight,
    kDamaged,
    kNoRoom,
    kConnectionLost,
    kNotAnswering,
    kClosed,
    kOutcomeUnknown,  // the connection was lost over a change that may be saved or not
    kFailed
  };

  /// `words` are the database's own on it.
  CStoreError(Kind kind, const CStoreText& text, const QString& words = QString())
      : text_(text), words_(words), bytes_(text.Logged().toUtf8()), kind_(kind) {}

  /// What a user reads whenever a wait for the store was abandoned.
  static CStoreError NotAnswering(Kind kind = kNotAnswering);

  const CStoreText& Text() const { return text_; }
  /// For the log: the text, and what the database itself said.
  QString LogText() const;
  const QString& Words() const { return words_; }
  Kind GetKind() const { return kind_; }
  /// Whether it was waited for in vain: the store may be there, which is another trouble than a refused connection.
  bool IsSilence() const { return is_silence_; }
  void MarkSilence() { is_silence_ = true; }
  /// Whether the server does not let in the account that it was asked with; the same once more is refused once more.
  bool RefusesAccount() const { return refuses_account_; }
  void MarkRefusedAccount() { refuses_account_ = true; }
  /// Whether the database did not answer to the end of it.
  bool IsOfConnection() const { return kind_ == kConnectionLost || kind_ == kOutcomeUnknown; }
  const char* what() const noexcept override { return bytes_.constData(); }

 private:
  CStoreText text_;
  QString words_;
  QByteArray bytes_;
  Kind kind_;
  bool is_silence_ = false, refuses_account_ = false;
};

/// What a caller of the service learns of it.
view_plugin_protocol::ErrorKind ErrorKindOf(CStoreError::Kind kind);

}  // namespace TarnHost::Store
