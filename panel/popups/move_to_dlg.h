#pragma once

#include <QDialog>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QQueue>
#include <QString>

class QLabel;
class QPushButton;

namespace WidgetKit {
class CNewLocationViewWidget;
}

namespace TarnPlanView {

class CGroupTree;
class CStandardPlanModel;
class CStandardViewController;

/// Lets the user choose the group that a plan goes to, in a tree of groups or by typing a part of the name. Groups that
/// are not loaded yet are fetched when the user opens the group above them, and, one after the other and up to a few
/// hundred, while a name is searched for. Thread: GUI.
class CMoveToDlg : public QDialog {
  Q_OBJECT
 public:
  /// `group_code`: where the plan stands now.
  CMoveToDlg(const QString& plan_name, const QString& group_code, QWidget* parent);

  /// Neither is owned; both may die first.
  void Offer(CStandardPlanModel* groups, CStandardViewController* controller);

 Q_SIGNALS:
  void SignalChosen(const QString& group_code);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build(const QString& plan_name);
  QWidget* BuildButtons();
  /// For a search: those of these rows, and of all below, whose groups are not loaded.
  void Queue(const QModelIndex& parent, int first, int last);
  void QueueAll();
  QModelIndex NextUnfetched();
  void FetchNext();
  void OnFetched(const QModelIndex& index);
  /// All are there, or as many as may be.
  void EndFetching();
  void OnLocated();
  /// Why the plan cannot go to the row that is current; empty when it can.
  QString Problem() const;
  bool HasFoundNothing() const;
  /// Whether a search has found nothing and has left groups out: there are too many, or one could not be fetched.
  bool HasMissedGroups() const;
  void Renew();
  void Choose();
  /// Moves to the current row if the plan may go there. After typing that is the row found, as soon as it is.
  void ChooseByKey();

  const QString group_code_;
  WidgetKit::CNewLocationViewWidget* const field_;
  CGroupTree* const tree_;
  QLabel* const note_;
  QPushButton* move_ = nullptr;
  QPointer<CStandardViewController> controller_;
  QPersistentModelIndex fetching_;  // by the search
  QQueue<QPersistentModelIndex> unfetched_;
  int fetches_ = 0;            // of all searches
  bool choose_found_ = false;  // Return came before what was typed had been found
};

}  // namespace TarnPlanView
