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

  /// Name, family, group, automatic run and times; the rest of the request stays. Times are "hh:mm:ss" and are written
  /// whatever the switch says.
  void GetPlanParam(view_plugin_protocol::AddPlanRequest& request);
  /// Not owned; null is ignored.
  void SetViewController(CStandardViewController* controller);
  /// Chooses the group of the plan that plays, else a default.
  void SetCurIndexByPlayItem();
  void ExpandDefaultIndex();

 Q_SIGNALS:
  void signalSavePlanAs();

 public Q_SLOTS:
  void OnSetDefaultIndex();
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
