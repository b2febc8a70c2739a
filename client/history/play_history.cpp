#include "history/play_history.h"

#include "history/shown_time.h"

namespace TarnClient {

CPlayHistory::CPlayHistory(QObject* parent) : QAbstractListModel(parent) {}

void CPlayHistory::Add(const PlayedPlan& plan) {
  RemoveRow(RowOf(plan.code));
  if (plans_.size() == kMostPlans) {
    RemoveRow(kMostPlans - 1);
  }
  beginInsertRows(QModelIndex(), 0, 0);
  plans_.prepend(plan);
  endInsertRows();
}

void CPlayHistory::RemoveRow(int row) {
  if (row < 0) {
    return;
  }
  beginRemoveRows(QModelIndex(), row, row);
  plans_.removeAt(row);
  endRemoveRows();
}

int CPlayHistory::RowOf(const QString& code) const {
  for (int row = 0; row < plans_.size(); ++row) {
    if (plans_[row].code == code) {
      return row;
    }
  }
  return -1;
}

void CPlayHistory::Rename(const QString& code, const QString& name) {
  const int row = RowOf(code);
  if (row >= 0 && plans_[row].name != name) {
    plans_[row].name = name;
    Q_EMIT dataChanged(index(row), index(row));
  }
}

void CPlayHistory::SetReason(const QString& code, const QString& why_not) {
  const int row = RowOf(code);
  if (row >= 0 && plans_[row].why_not != why_not) {
    plans_[row].why_not = why_not;
    Q_EMIT dataChanged(index(row), index(row));
  }
}

void CPlayHistory::SetPlace(const QString& code, const QString& place) {
  const int row = RowOf(code);
  if (row >= 0 && plans_[row].place != place) {
    plans_[row].place = place;
    Q_EMIT dataChanged(index(row), index(row));
  }
}

QString CPlayHistory::NameOf(const QString& code) const {
  const int row = RowOf(code);
  if (row < 0) {
    return QString();
  }
  return plans_[row].name;
}

void CPlayHistory::SetPlans(const QVector<PlayedPlan>& plans) {
  beginResetModel();
  plans_ = plans.mid(0, kMostPlans);
  endResetModel();
}

int CPlayHistory::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) {
    return 0;
  }
  return plans_.size();
}

QVariant CPlayHistory::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return QVariant();
  }
  const PlayedPlan& plan = plans_.at(index.row());
  const QString time = ShownTime(plan.time, QStringLiteral("HH:mm"));
  const QString below = plan.why_not.isEmpty() ? plan.place : plan.why_not;
  switch (role) {
    case Qt::DisplayRole:
      return plan.name;
    case PlaceRole:
      return below;
    case TimeRole:
      return time;
    case Qt::ToolTipRole:
      return QStringLiteral("%1<br>%2").arg(plan.name.toHtmlEscaped(), below.toHtmlEscaped());
    case Qt::AccessibleTextRole:
      return QStringLiteral("%1, %2, %3").arg(plan.name, below, time);
    default:
      return QVariant();
  }
}

Qt::ItemFlags CPlayHistory::flags(const QModelIndex& index) const {
  if (index.isValid() && !plans_.at(index.row()).why_not.isEmpty()) {
    return Qt::ItemNeverHasChildren;
  }
  return QAbstractListModel::flags(index);
}

}  // namespace TarnClient
