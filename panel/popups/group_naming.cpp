#include "group_naming.h"

#include <QWidget>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "call_answer.h"
#include "keep_on_screen.h"
#include "plan_item_role.h"
#include "plan_log.h"
#include "plan_rules/plan_limits.h"
#include "standard_view_controller.h"
#include "view_extern_widget.h"

namespace TarnPlanView {

using MarUIControl::CNomalMessage;

namespace {

constexpr int kAddMode = 0;
constexpr int kRenameMode = 1;

// Of the tip about groups that lie too deep.
constexpr int kWarning = 2;
constexpr int kAtTop = 1;
constexpr int kDistance = 15;  // pixels

int DepthOf(QModelIndex index) {
  int depth = 0;
  for (; index.isValid(); index = index.parent()) {
    ++depth;
  }
  return depth;
}

}  // namespace

CGroupNaming::CGroupNaming(QWidget* panel) : QObject(panel), panel_(panel) {}

CViewNameEdit* CGroupNaming::Editor() {
  if (!editor_) {
    editor_ = new CViewNameEdit(panel_);
    connect(editor_, &CViewNameEdit::SignalAddPlanViewGroup, this, &CGroupNaming::SignalNewName);
    connect(editor_, &CViewNameEdit::SignalEditPlanViewGroup, this, &CGroupNaming::SignalOtherName);
    connect(editor_, &CViewNameEdit::SignalClosed, this, [this] { ForgetWhatFor(); });
  }
  return editor_;
}

bool CGroupNaming::IsTooDeep(const QModelIndex& group) {
  return DepthOf(group) >= view_plugin_protocol::kDeepestLevel;
}

QPoint CGroupNaming::PlaceBelow(const QWidget* button) {
  return button->parentWidget()->mapToGlobal(QPoint(button->x(), button->y() + button->height() + 1));
}

void CGroupNaming::ShowAt(const QPoint& place) {
  CViewNameEdit* editor = Editor();
  editor->setFocusPolicy(Qt::StrongFocus);
  editor->move(place);
  KeepOnScreen(editor, place);
  editor->show();
  editor->activateWindow();
}

void CGroupNaming::AskForNew(const QModelIndex& parent, const QPoint& place) {
  Editor()->SetMode(kAddMode);
  if (!unused_name_.isEmpty()) {
    Editor()->SetName(std::exchange(unused_name_, QString()));
  }
  ForgetWhatFor();
  if (parent.isValid()) {
    parent_ = CPlanNodeRef(parent);
  }
  ShowAt(place);
}

void CGroupNaming::AskForRename(const QModelIndex& group, const QPoint& place) {
  Editor()->SetMode(kRenameMode);
  Editor()->SetName(group.data().toString());
  ForgetWhatFor();
  renamed_ = CPlanNodeRef(group);
  ShowAt(place);
}

void CGroupNaming::AskForPlanName(const QString& plan_code, const QString& name, const QPoint& place) {
  Editor()->SetMode(kRenameMode);
  Editor()->SetTitle(CViewExternWidget::tr("Rename plan"));
  Editor()->SetName(name);
  if (unused_plan_names_.contains(plan_code)) {
    Editor()->SetTyped(unused_plan_names_.take(plan_code));
  }
  ForgetWhatFor();
  renamed_plan_ = plan_code;
  ShowAt(place);
}

void CGroupNaming::KeepPlanName(const QString& plan_code, const QString& name) {
  unused_plan_names_.insert(plan_code, name);
}

void CGroupNaming::ForgetWhatFor() {
  renamed_.reset();
  parent_.reset();
  renamed_plan_.clear();
}

void CGroupNaming::Add(CStandardViewController* controller, const QString& name, const QModelIndex& current,
                       const Added& added) {
  const auto asked_for = std::exchange(parent_, std::nullopt);
  QModelIndex parent = current;
  if (asked_for) {
    parent = asked_for->Resolve();
  }
  if (asked_for && !parent.isValid()) {
    unused_name_ = name;
    Q_EMIT SignalMessageTipNeeded(
        CViewExternWidget::tr("The group around the new one is no longer there. Choose another; the name is kept."),
        CNomalMessage::Failure);
    return;
  }
  if (IsTooDeep(parent)) {
    tarn_ui_data_controller::CMessageTipManager::Instance().ShowMessage(MarUIControl::GetIndependentWindow(panel_),
                                                                        CViewExternWidget::tr("MplOHCzygFvfHFyDzE"),
                                                                        kWarning, kAtTop, kDistance);
    TARN_PLAN_LOG_INFO("CNomalMessageManager::Instance().ShowMessage ViewGroup Tips Show");
    return;
  }
  if (!controller) {
    return;
  }
  const QString parent_code = parent.data(GroupIndexCodeRole).toString();
  controller->AddPlanGroupByIndexName(parent, name, [added, parent_code](const CallAnswer& answer) {
    if (answer.ok) {
      added(answer.text, parent_code);
    }
  });
}

void CGroupNaming::Rename(CStandardViewController& controller, const QString& name, const QModelIndex& current) {
  QModelIndex group = current;
  if (renamed_) {
    group = renamed_->Resolve();
  }
  if (group.isValid()) {
    controller.UpdatePlanGroupName(group, name);
  } else {
    Q_EMIT SignalMessageTipNeeded(CViewExternWidget::tr("This group is no longer there."), CNomalMessage::Failure);
  }
}

void CGroupNaming::Close() {
  if (editor_) {
    editor_->hide();
    editor_->deleteLater();
    editor_ = nullptr;
  }
  unused_name_.clear();
  unused_plan_names_.clear();
}

}  // namespace TarnPlanView
