#pragma once

#include <QString>
#include <QWidget>
#include <memory>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "tarn_plan_view_export.h"

namespace TarnPlanView {

class CStandardViewController;

/// Asks for name, group and daily times of a new plan made from what is on the live wall. The dialog only checks and
/// collects; the receiver of signalSavePlanAs() calls GetPlanParam() and sends the request. Return saves, Esc closes;
/// it also closes when its window loses the activation with the cursor outside. Thread: GUI.
class TARNPLANVIEW_EXPORT CSavePlanAsDlg : public QWidget {
  Q_OBJECT
 public:
  /// `themeName`: monitor id of the tree whose groups are offered. Messages stand over the window of `parent`.
  CSavePlanAsDlg(QString themeName, QWidget* parent);
  ~CSavePlanAsDlg() override;

  /// Name, family, group, automatic run and times; the rest of the request stays. Times are "HH:mm:ss", 00 to
  /// 23 hours in ASCII digits, as in all records, and are written whatever the switch says.
  void GetPlanParam(view_plugin_protocol::AddPlanRequest& request);
  /// Not owned; null is ignored.
  void SetViewController(CStandardViewController* controller);
  /// Chooses the group of the plan that plays, else the root where plans may stand below it, else its first group.
  void SetCurIndexByPlayItem();
  /// Has the groups below the root fetched, as if the user opened it.
  void ExpandDefaultIndex();

 Q_SIGNALS:
  /// The user has confirmed and what was typed is in order. The dialog is hidden behind it.
  void signalSavePlanAs();

 public Q_SLOTS:
  /// Chooses the first group, else the root; only once, and never over a choice of the user.
  void OnSetDefaultIndex();
  /// As the button: checks name, group and times, says what is wrong by a message, else emits signalSavePlanAs().
  void OnClickSaveAsPlan();

 protected:
  void showEvent(QShowEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void setUpNameField();
  void setUpTimedPlay();
  void setUpPlanTree();
  void connectSignalAndSlot();
  void showDuration(bool on);
  void renewOverMidnightNote();
  void stopHint();
  void choose(const QModelIndex& index);
  void chooseAwaited();
  QString namingRule() const;
  QString nameProblem() const;
  void showRefusal(const QString& text) const;
  void setDefaultIndex();
  bool checkInput() const;
  bool checkParentNodeAllowed();
  bool checkAutoPlayTime();

  struct Data;
  std::unique_ptr<Data> d_;
};

}  // namespace TarnPlanView
