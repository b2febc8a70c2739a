#include <algorithm>
#include <utility>

#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/download_slide_widget_pos_rule.h"
#include "WidgetKit/dock_widget.h"
#include "plan_item_role.h"
#include "view_extern_widget_p.h"

// The plan editor beside the panel, and which plan is current when it has saved one.
namespace TarnPlanView {

namespace {

constexpr int kEditorWidth = 770;

}  // namespace

// All there are: their editors open over the same wall.
QVector<CViewExternWidget::Private*>& CViewExternWidget::Private::Panels() {
  static QVector<Private*> panels;
  return panels;
}

CViewExternWidget::Private::Private(CViewExternWidget* panel) : q(panel) {
  Panels().append(this);
}

CViewExternWidget::Private::~Private() {
  Panels().removeOne(this);
}

void CViewExternWidget::Private::editPlan(const QString& code) {
  const QPointer<CViewExternWidget> alive(q);
  openPlanEditor([code](CTarnAddPlanWidget* editor) { editor->OpenPlan(code); });
  if (alive) {
    restoreEnableState();
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
      open_next.reset();
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

QWidget* CViewExternWidget::Private::windowOfEditor() const {
  return isEditing() ? plan_editor->window() : MarUIControl::GetIndependentWindow(monitor ? monitor.data() : q);
}

CViewExternWidget::Private* CViewExternWidget::Private::holderOfPlace() {
  if (isEditing()) {
    return this;
  }
  const QWidget* place = windowOfEditor();
  const auto holds = [place](const Private* panel) { return panel->isEditing() && panel->windowOfEditor() == place; };
  const auto holder = std::find_if(Panels().begin(), Panels().end(), holds);
  return holder == Panels().end() ? nullptr : *holder;
}

bool CViewExternWidget::Private::isEditedAnywhere(const QString& plan_code) {
  return std::any_of(Panels().cbegin(), Panels().cend(), [&plan_code](const Private* panel) {
    return panel->isEditing() && panel->plan_editor->PlanCode() == plan_code;
  });
}

bool CViewExternWidget::Private::openPlanEditor(const OpenInEditor& open) {
  Private* holder = holderOfPlace();
  if (!holder) {
    showPlanEditor(open);
    return true;
  }
  const QPointer<CViewExternWidget> alive(q), holding(holder->q);
  const int asked_in = session, held_in = holder->session;
  const bool saved_anyway = holder->plan_editor->IsSaving();  // then the user is told to wait
  if (!saved_anyway) {
    holder->open_next = NextPlan{q, session, open};  // before the question: the save may be done when it returns
  }
  const bool free = holder->plan_editor->MayClose();
  const bool is_saving = holding && holder->plan_editor && holder->plan_editor->IsSaving();
  if (holding && holder->session == held_in && !saved_anyway && (free || !is_saving)) {
    holder->open_next.reset();  // he keeps what is there, or has been told why it cannot be saved
  }
  if (!free || !alive || session != asked_in || !IsReady()) {
    return false;
  }
  // While the question stood, what had waited for the first editor may have taken its place.
  Private* holder_now = holderOfPlace();
  if (holder_now && holder_now != holder && holder_now != this) {
    return false;
  }
  if (holder_now && holder_now != this) {
    holder_now->closePlanEditor();
  }
  showPlanEditor(open);
  return true;
}

void CViewExternWidget::Private::openAwaited(const NextPlan& next) {
  if (session == next.session && IsReady()) {
    const QPointer<CViewExternWidget> alive(q);
    showPlanEditor(next.open);
    if (alive) {
      restoreEnableState();
    }
  }
}

void CViewExternWidget::Private::showPlanEditor(const OpenInEditor& open) {
  open(PlanEditor());
  WidgetKit::ShowDockWidget(InitSlidingRuleWidget());
  Q_EMIT q->SignalEditorChanged();
}

void CViewExternWidget::Private::closePlanEditor() {
  const QPointer<CViewExternWidget> alive(q);
  const std::optional<NextPlan> next = std::exchange(open_next, std::nullopt);
  if (std::exchange(leaving, false)) {
    hidePlanEditor();
    if (alive) {
      Q_EMIT q->SignalMayLeave();
    }
    return;
  }
  const bool is_ours = next && next->panel == q;
  if (is_ours && IsReady()) {
    openAwaited(*next);
    return;
  }
  hidePlanEditor();
  if (next && next->panel && !is_ours) {
    next->panel->d_->openAwaited(*next);
  }
}

// The keys go to the rows, unless the user has gone on to something else meanwhile.
void CViewExternWidget::Private::hidePlanEditor() {
  const QWidget* focus = plan_editor ? plan_editor->window()->focusWidget() : nullptr;
  const bool elsewhere = focus && focus != plan_editor && !plan_editor->isAncestorOf(focus);
  WidgetKit::HideDockWidget(plan_editor);
  restoreEnableState();
  if (!elsewhere) {
    ui.plan_stacked_widget->currentWidget()->setFocus();
  }
  Q_EMIT q->SignalEditorChanged();
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
  if (!parent.isValid()) {
    noteReload(row);
  }
  if (row.isValid() && row.parent() == parent && row.row() >= first && row.row() <= last) {
    removed_current = row.data(PlanIndexCodeRole).toString();
  }
}

// The trees are about to be loaded again. What is waited for already counts more than a root that stood in for it.
void CViewExternWidget::Private::noteReload(const QModelIndex& row) {
  if (row_before_load || !row.isValid() || known.between_users) {
    return;
  }
  row_before_load = CPlanNodeRef(row);
  for (QModelIndex group = row.parent(); group.isValid(); group = group.parent()) {
    ui.plan_view_tree->ExpandWhenLoaded(group.data(GroupIndexCodeRole).toString());
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
  const bool gone_on = open_next.has_value() || ui.plan_view_tree->hasFocus();
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
