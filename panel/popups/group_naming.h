#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <optional>

#include "plan_node_ref.h"
#include "view_name_edit.h"

class QWidget;

namespace TarnPlanView {

class CStandardViewController;

/// Names of groups, and other names of plans: opens the name editor below a button and keeps what it was opened for,
/// whatever becomes current meanwhile. Thread: GUI.
class CGroupNaming : public QObject {
  Q_OBJECT
 public:
  explicit CGroupNaming(QWidget* panel);

  /// Asks for the name of a new group below `parent`, which may be invalid for none chosen.
  void AskForNew(const QModelIndex& parent, const QWidget* button);
  void AskForRename(const QModelIndex& group, const QWidget* button);
  /// Asks for another name of a plan, whose row need not be loaded.
  void AskForPlanName(const QString& plan_code, const QString& name, const QWidget* button);
  /// Code of the plan that the editor is open for; empty while it is about a group.
  QString RenamedPlan() const { return renamed_plan_; }
  /// Adds the group where its name was asked for, else below `current`; six levels at most.
  /// Without a controller it only says what would be refused.
  void Add(CStandardViewController* controller, const QString& name, const QModelIndex& current);
  /// Renames the row that the name was asked for, else `current`.
  void Rename(CStandardViewController& controller, const QString& name, const QModelIndex& current);
  /// The editor is made again when next asked for; nothing that was typed is kept.
  void Close();

 Q_SIGNALS:
  void SignalNewName(const QString& name);
  void SignalOtherName(const QString& name);
  void SignalMessageTipNeeded(const QString& text, int state);

 private:
  CViewNameEdit* Editor();
  void ForgetWhatFor();
  void ShowBelow(const QWidget* button);

  QWidget* const panel_;
  QPointer<CViewNameEdit> editor_;
  std::optional<CPlanNodeRef> renamed_, parent_;  // what the editor is open for
  QString renamed_plan_;
  QString unused_name_;  // of a group whose parent has vanished meanwhile
};

}  // namespace TarnPlanView
