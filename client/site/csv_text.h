#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <vector>

namespace TarnClient {

/// A table in a text file, as RFC 4180 has it: cells between commas, quoted where they hold commas, quotes or line
/// breaks. Reading also takes semicolons and tabs in the place of commas, and what is written in UTF-8, UTF-16 or
/// an older encoding that the caller names. Thread: any.
class CCsvText {
  Q_DECLARE_TR_FUNCTIONS(TarnClient::CCsvText)
 public:
  struct Row {
    QStringList cells;
    int line = 0;  // of the file, from 1, where the row begins
  };

  /// False with a line in `why` for a file that is no such text; empty lines are no rows.
  bool Read(const QByteArray& bytes, const char* older_encoding, QString* why);
  /// That in which a user of these languages has tables of older programs.
  static const char* OlderEncodingOf(QLocale::Language client, QLocale::Language system);
  const std::vector<Row>& Rows() const { return rows_; }
  /// How the file was written, as in "UTF-8".
  const QString& Encoding() const { return encoding_; }

  /// UTF-8 with a mark of it at the beginning, which table programs ask for.
  static QByteArray Write(const std::vector<QStringList>& rows);

 private:
  bool Decode(const QByteArray& bytes, const char* older, QString* text);
  bool Split(const QString& text, QString* why);

  std::vector<Row> rows_;
  QString encoding_;
};

}  // namespace TarnClient
