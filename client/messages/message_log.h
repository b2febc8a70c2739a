#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QVector>

namespace TarnClient {

/// The last messages of the client, newest first; the oldest of too many goes. A message that says again what the
/// newest says is counted there. Thread: GUI.
class CMessageLog : public QAbstractTableModel {
  Q_OBJECT
 public:
  static constexpr int kMost = 200;
  enum Column { Time, Kind, Text, kColumns };
  enum Role { KindRole = Qt::UserRole, PlainTextRole };

  explicit CMessageLog(QObject* parent = nullptr);

  /// `kind` as for a tip: 0 success, 1 failure, 2 warning, 3 hint.
  void Add(const QString& text, int kind, const QDateTime& time = QDateTime::currentDateTime());
  void Clear();
  /// Failures and warnings that came since MarkRead(), as often as they were said.
  int Unread() const { return unread_; }
  void MarkRead();
  /// A line for each row, with tabs between the columns.
  QString TextOf(const QModelIndexList& rows) const;
  /// "Error", ... with the mark that tips of this kind carry.
  static QString NameOf(int kind);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 Q_SIGNALS:
  void SignalUnreadChanged(int unread);

 private:
  struct Message {
    QString text;
    int kind = 0;
    QDateTime time;
    int count = 1;
  };
  QString Shown(const Message& message, int column) const;
  void CountUnread(int kind);

  QVector<Message> messages_;  // newest first
  int unread_ = 0;
};

}  // namespace TarnClient
