#include <utility>

#include "TarnUIDataController/download_slide_widget_pos_rule.h"
#include "WidgetKit/dock_widget.h"
#include "plan_item_role.h"
#include "view_extern_widget_p.h"

// The plan editor beside the panel, and which plan is current when it has saved one.
namespace TarnPlanView {

namespace {

constexpr int kEditorWidth = 770;

}  // namespace

void CViewExternWidget::Private::editPlan(const QString& code) {
  const QPointer<CViewExternWidget> alive(q);
  openPlanEditor([code](CTarnAddPlanWidget* editor) { editor->OpenPlan(code); });
  if (alive) {
    renewHold();
  }
}

CTarnAddPlanWidget* CViewExternWidget::Private::PlanEditor() {
  if (!plan_editor) {
    plan_editor = new CTarnAddPlanWidget(q);
    plan_editor->setObjectName(QStringLiteral("add_edit_plan_widget"));
    plan_editor->hide();
    plan_editor->SetLogicNodeParam(logic_node);
    connect(plan_editor, &CTarnAddPlanWidget::SignalSaved, q,
            [this](const QString& plan, const QString& group) { showSaved(plan, group); });
    connect(plan_editor, &CTarnAddPlanWidget::SignalNotSaved, q, [this] {
      leaving = false;
      open_next = nullptr;
    });
    connect(plan_editor, &CTarnAddPlanWidget::SignalClosed, q, [this] { closePlanEditor(); });
    connect(plan_editor, &CTarnAddPlanWidget::SignalMessageTipNeeded, q, &CViewExternWidget::SignalMessageTipNeeded);
  }
  plan_editor->SetModel(model);
  plan_editor->SetController(controller);
  return plan_editor;
}

bool CViewExternWidget::Private::isEditing() const {
  return WidgetKit::IsDockWidgetShown(plan_editor);
}

bool CViewExternWidget::Private::openPlanEditor(const OpenInEditor& open) {
  if (!isEditing()) {
    showPlanEditor(open);
    return true;
  }
  const QPointer<CViewExternWidget> alive(q);
  const int asked_in = session;
  const bool saved_anyway = plan_editor->IsSaving();  // then the user is told to wait
  if (!saved_anyway) {
    open_next = open;  // before the question: the save may be done by the time it returns
  }
  const bool free = plan_editor->MayClose();
  if (!alive || session != asked_in || !IsReady()) {
    return false;
  }
  if (free) {
    open_next = nullptr;
    showPlanEditor(open);
  } else if (!saved_anyway && !(plan_editor && plan_editor->IsSaving())) {
    open_next = nullptr;  // he keeps what is there, or has been told why it cannot be saved
  }
  return free;
}

void CViewExternWidget::Private::showPlanEditor(const OpenInEditor& open) {
  open(PlanEditor());
  WidgetKit::ShowDockWidget(InitSlidingRuleWidget());
}

void CViewExternWidget::Private::closePlanEditor() {
  const OpenInEditor next = std::exchange(open_next, nullptr);
  if (std::exchange(leaving, false)) {
    hidePlanEditor();
    Q_EMIT q->SignalMayLeave();
  } else if (next && IsReady()) {
    showPlanEditor(next);
    renewHold();
  } else {
    hidePlanEditor();
  }
}

// The keys go to the tree, unless the user has gone on to something else meanwhile.
void CViewExternWidget::Private::hidePlanEditor() {
  const QWidget* focus = plan_editor ? plan_editor->window()->focusWidget() : nullptr;
  const bool elsewhere = focus && focus != plan_editor && !plan_editor->isAncestorOf(focus);
  WidgetKit::HideDockWidget(plan_editor);
  renewHold();
  if (!elsewhere) {
    ui.plan_view_tree->setFocus();
  }
}

WidgetKit::CSlideOutData CViewExternWidget::Private::InitSlidingRuleWidget() {
  WidgetKit::CSlideOutData slide;
  slide.SetVal_slide_width(kEditorWidth);
  slide.SetVal_ptr_dock_widget(plan_editor);
  if (monitor) {
    auto rule = std::make_shared<tarn_ui_data_controller::CDownloadSlideWidgetPosRule>();
    rule->SetPosAttachTo(monitor);
    slide.SetVal_ptr_dock_pos_rule(rule);
  }
  return slide;
}

void CViewExternWidget::Private::noteRemoval(const QModelIndex& parent, int first, int last) {
  const QModelIndex row = Current();
  if (row.isValid() && row.parent() == parent && row.row() >= first && row.row() <= last) {
    removed_current = row.data(PlanIndexCodeRole).toString();
  }
}

void CViewExternWidget::Private::followUpdated(const QString& plan_code) {
  if (removed_current.isEmpty() || removed_current != plan_code) {
    return;
  }
  removed_current.clear();
  if (RowOf(plan_code, false).isValid()) {
    q->SetCurPlanByIndexCode(plan_code);
  } else if (!Current().data(IsGroupRole).toBool()) {  // a neighbour, for which no key is meant
    ui.plan_view_tree->setCurrentIndex(Current().parent());
  }
}

void CViewExternWidget::Private::showSaved(const QString& plan_code, const QString& group_code) {
  const bool gone_on = open_next || ui.plan_view_tree->hasFocus();
  if (gone_on || stopped) {
    return;
  }
  if (RowOf(plan_code, false).isValid()) {
    q->SetCurPlanByIndexCode(plan_code);
    return;
  }
  const QModelIndex group = RowOf(group_code, true);
  if (group.isValid()) {
    saved_plan = plan_code;
    saved_group = group_code;
    ui.plan_view_tree->setCurrentIndex(group);
    ui.plan_view_tree->ExpandAsync(group);
  }
}

void CViewExternWidget::Private::showAwaited() {
  if (saved_plan.isEmpty()) {
    return;
  }
  const bool gone_on = Current().data(GroupIndexCodeRole).toString() != saved_group;
  if (!gone_on && RowOf(saved_plan, false).isValid()) {
    q->SetCurPlanByIndexCode(std::exchange(saved_plan, QString()));
  } else if (gone_on) {
    saved_plan.clear();
  }
}

}  // namespace TarnPlanView
