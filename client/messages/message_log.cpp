#include "messages/message_log.h"

#include <QStringList>
#include <utility>

#include "MarUIControl/key_guide.h"
#include "history/shown_time.h"

namespace TarnClient {

namespace {

enum Kind { Success, Failure, Warning, Hint };

}  // namespace

CMessageLog::CMessageLog(QObject* parent) : QAbstractTableModel(parent) {}

void CMessageLog::Add(const QString& text, int kind, const QDateTime& time) {
  CountUnread(kind);
  if (!messages_.isEmpty() && messages_.first().text == text && messages_.first().kind == kind) {
    ++messages_.first().count;
    messages_.first().time = time;
    Q_EMIT dataChanged(index(0, 0), index(0, kColumns - 1));
    return;
  }
  if (messages_.size() == kMost) {
    beginRemoveRows(QModelIndex(), kMost - 1, kMost - 1);
    messages_.removeLast();
    endRemoveRows();
  }
  beginInsertRows(QModelIndex(), 0, 0);
  Message message;
  message.text = text;
  message.kind = kind;
  message.time = time;
  messages_.prepend(message);
  endInsertRows();
}

void CMessageLog::CountUnread(int kind) {
  if (kind == Failure || kind == Warning) {
    Q_EMIT SignalUnreadChanged(++unread_);
  }
}

void CMessageLog::Clear() {
  beginResetModel();
  messages_.clear();
  endResetModel();
  MarkRead();
}

void CMessageLog::MarkRead() {
  if (std::exchange(unread_, 0) > 0) {
    Q_EMIT SignalUnreadChanged(0);
  }
}

QString CMessageLog::TextOf(const QModelIndexList& rows) const {
  QStringList lines;
  for (const QModelIndex& row : rows) {
    const Message& message = messages_.at(row.row());
    const QString time = message.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    lines << QStringList{time, Shown(message, Kind), Shown(message, Text)}.join(QLatin1Char('\t'));
  }
  return lines.join(QLatin1Char('\n'));
}

QString CMessageLog::NameOf(int kind) {
  switch (kind) {
    case Success:
      return QStringLiteral("\u2713 ") + tr("Done");
    case Warning:
      return QStringLiteral("! ") + tr("Warning");
    case Hint:
      return QStringLiteral("i ") + tr("Hint");
    default:
      return QStringLiteral("\u2715 ") + tr("Error");
  }
}

int CMessageLog::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) {
    return 0;
  }
  return messages_.size();
}

int CMessageLog::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) {
    return 0;
  }
  return kColumns;
}

QString CMessageLog::Shown(const Message& message, int column) const {
  switch (column) {
    case Time:
      return ShownTime(message.time, QStringLiteral("HH:mm:ss"));
    case Kind:
      return NameOf(message.kind);
    default:
      break;
  }
  if (message.count > 1) {
    return QStringLiteral("%1  \u00d7%2").arg(message.text).arg(message.count);
  }
  return message.text;
}

QVariant CMessageLog::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return QVariant();
  }
  const Message& message = messages_.at(index.row());
  switch (role) {
    case Qt::DisplayRole:
      return Shown(message, index.column());
    case Qt::AccessibleTextRole:
      return QStringList{NameOf(message.kind), Shown(message, Text), Shown(message, Time)}.join(QStringLiteral(", "));
    case Qt::ToolTipRole:
      return MarUIControl::TipWithKeys(message.text, {});  // the row may show less of it
    case KindRole:
      return message.kind;
    case PlainTextRole:
      return message.text;
    default:
      return QVariant();
  }
}

QVariant CMessageLog::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) {
    return QVariant();
  }
  switch (section) {
    case Time:
      return tr("Time");
    case Kind:
      return tr("Kind");
    default:
      return tr("Message");
  }
}

}  // namespace TarnClient
