#pragma once

#include <QAbstractListModel>
#include <QDateTime>
#include <QVector>

namespace TarnClient {

/// A plan that was played.
struct PlayedPlan {
  QString code, name;
  QString place;  // the groups above it, or its family
  QDateTime time;
  QString why_not = {};  // it cannot be played any more; not kept for the next start
};

/// The plans that the user played last, newest first, each once. Thread: GUI.
class CPlayHistory : public QAbstractListModel {
  Q_OBJECT
 public:
  enum Role { PlaceRole = Qt::UserRole + 1, TimeRole };
  static constexpr int kMostPlans = 20;

  explicit CPlayHistory(QObject* parent = nullptr);

  /// On top; an older entry of the same plan goes.
  void Add(const PlayedPlan& plan);
  /// Nothing for a plan that is not there.
  void Rename(const QString& code, const QString& name);
  void SetPlace(const QString& code, const QString& place);
  /// Why a plan cannot be played any more, for the user: it stays in its place, grey. An empty text: it can.
  void SetReason(const QString& code, const QString& why_not);
  void Clear() { SetPlans({}); }
  /// Latest first; more than kMostPlans are cut off.
  void SetPlans(const QVector<PlayedPlan>& plans);
  const QVector<PlayedPlan>& Plans() const { return plans_; }
  const PlayedPlan& At(int row) const { return plans_.at(row); }
  /// Empty for a plan that is not there.
  QString NameOf(const QString& code) const;

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  void RemoveRow(int row);
  int RowOf(const QString& code) const;

  QVector<PlayedPlan> plans_;
};

}  // namespace TarnClient
