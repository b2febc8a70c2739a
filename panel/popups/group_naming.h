#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <optional>

#include "plan_node_ref.h"
#include "view_name_edit.h"

class QWidget;

namespace TarnPlanView {

class CStandardViewController;

/// Names of groups, and other names of plans: opens the name editor at a place of the screen, that of the button or of
/// the row it was asked for at, and keeps what it was opened for, whatever becomes current meanwhile. Thread: GUI.
class CGroupNaming : public QObject {
  Q_OBJECT
 public:
  explicit CGroupNaming(QWidget* panel);

  /// Whether no group can stand below this one.
  static bool IsTooDeep(const QModelIndex& group);
  /// One pixel below the button, left edges aligned.
  static QPoint PlaceBelow(const QWidget* button);

  /// Asks for the name of a new group below `parent`, which may be invalid for none chosen.
  void AskForNew(const QModelIndex& parent, const QPoint& place);
  void AskForRename(const QModelIndex& group, const QPoint& place);
  /// Asks for another name of a plan, whose row need not be loaded.
  void AskForPlanName(const QString& plan_code, const QString& name, const QPoint& place);
  /// The name that was typed for a plan, but could not be given: it stands in the editor when next asked for.
  void KeepPlanName(const QString& plan_code, const QString& name);
  /// Code of the plan that the editor is open for; empty while it is about a group.
  QString RenamedPlan() const { return renamed_plan_; }
  /// Adds the group where its name was asked for, else below `current`; six levels at most.
  /// Without a controller it only says what would be refused.
  /// `added` is called once the group is there.
  using Added = std::function<void(const QString& code, const QString& parent_code)>;
  void Add(CStandardViewController* controller, const QString& name, const QModelIndex& current, const Added& added);
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
  void ShowAt(const QPoint& place);

  QWidget* const panel_;
  QPointer<CViewNameEdit> editor_;
  std::optional<CPlanNodeRef> renamed_, parent_;  // what the editor is open for
  QString renamed_plan_;
  QString unused_name_;                        // of a group whose parent has vanished meanwhile
  QHash<QString, QString> unused_plan_names_;  // by code of the plan
};

}  // namespace TarnPlanView
