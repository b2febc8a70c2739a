#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace TarnHost::Store {

/// What the store has to say to a user, before it is put into the user's language: a text and what it names. Thread:
/// any.
class CStoreText {
 public:
  CStoreText() = default;
  /// Words that read the same in every language: a name, a number, a database's own; or for the command line alone.
  CStoreText(const QString& words) : words_(words) {}
  /// `source` is a literal marked with QT_TRANSLATE_NOOP("TarnHost::Store", ...); %1 to %9 stand for the arguments.
  CStoreText(const char* source, const QVector<CStoreText>& arguments = {}) : source_(source), arguments_(arguments) {}

  bool IsEmpty() const { return source_ == nullptr && words_.isEmpty(); }
  /// As the user reads it.
  QString Shown() const { return Rendered(true); }
  QStringList ShownArguments() const { return RenderedArguments(true); }
  /// In English, as the log has it.
  QString Logged() const { return Rendered(false); }

 private:
  QString Rendered(bool translated) const;
  QStringList RenderedArguments(bool translated) const;

  const char* source_ = nullptr;
  QString words_;  // instead of a source
  QVector<CStoreText> arguments_;
};

}  // namespace TarnHost::Store
