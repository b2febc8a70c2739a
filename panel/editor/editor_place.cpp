#include "editor_place.h"

#include <algorithm>
#include <utility>

#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/download_slide_widget_pos_rule.h"
#include "WidgetKit/dock_widget.h"

namespace TarnPlanView {

namespace {

constexpr int kEditorWidth = 770;

}  // namespace

QVector<CEditorPlace*>& CEditorPlace::Places() {
  static QVector<CEditorPlace*> places;
  return places;
}

CEditorPlace::CEditorPlace(QWidget* panel) : QObject(panel), panel_(panel) {
  Places().append(this);
}

CEditorPlace::~CEditorPlace() {
  Places().removeOne(this);
}

void CEditorPlace::SetModel(CStandardPlanModel* model) {
  model_ = model;
}

void CEditorPlace::SetController(CStandardViewController* controller) {
  if (controller_) {
    disconnect(controller_, nullptr, this, nullptr);
  }
  controller_ = controller;
  if (editor_) {
    editor_->SetController(controller);
  }
  if (controller) {
    connect(controller, &CStandardViewController::SignalGetPlanInfo, this, [this](const auto& plan) {
      if (editor_) {
        editor_->OnPlanInfo(plan);
      }
    });
  }
}

void CEditorPlace::SetLogicNodeParam(const ResourceTreeKit::LogicNodeParam& param) {
  logic_node_ = param;
  if (editor_) {
    editor_->SetLogicNodeParam(param);
  }
}

void CEditorPlace::SetMonitor(QWidget* monitor) {
  monitor_ = monitor;
}

CEditorPlace::State CEditorPlace::CurrentState() const {
  if (!WidgetKit::IsDockWidgetShown(editor_)) {
    return State::Closed;
  }
  if (editor_->IsSaving()) {
    return next_ ? State::Queued : State::Saving;
  }
  return next_ ? State::Asking : State::Open;
}

bool CEditorPlace::IsEditedAnywhere(const QString& plan_code) {
  return std::any_of(Places().cbegin(), Places().cend(), [&plan_code](const CEditorPlace* place) {
    return place->IsOpen() && place->editor_->PlanCode() == plan_code;
  });
}

bool CEditorPlace::IsOpenIn(const QWidget* window) {
  return std::any_of(Places().cbegin(), Places().cend(),
                     [window](const CEditorPlace* place) { return place->IsOpen() && place->Window() == window; });
}

QWidget* CEditorPlace::Window() const {
  if (IsOpen()) {
    return editor_->window();
  }
  return MarUIControl::GetIndependentWindow(monitor_ ? monitor_.data() : panel_);
}

// The place, this or another panel's, whose editor is open where ours opens; null for none.
CEditorPlace* CEditorPlace::Holder() {
  if (IsOpen()) {
    return this;
  }
  const QWidget* window = Window();
  for (CEditorPlace* place : Places()) {
    if (place->IsOpen() && place->Window() == window) {
      return place;
    }
  }
  return nullptr;
}

CTarnAddPlanWidget* CEditorPlace::Editor() {
  if (!editor_) {
    editor_ = new CTarnAddPlanWidget(panel_);
    editor_->setObjectName(QStringLiteral("add_edit_plan_widget"));
    editor_->hide();
    editor_->SetLogicNodeParam(logic_node_);
    connect(editor_, &CTarnAddPlanWidget::SignalStored, this, [this](const QString& plan, const QString& group) {
      const bool goes_on = next_ && next_->opening;
      if (!goes_on) {
        Q_EMIT SignalStored(plan, group);
      }
    });
    connect(editor_, &CTarnAddPlanWidget::SignalNotStored, this, [this] { next_.reset(); });
    connect(editor_, &CTarnAddPlanWidget::SignalClosed, this, &CEditorPlace::OnClosed);
    connect(editor_, &CTarnAddPlanWidget::SignalMessageTipNeeded, this, &CEditorPlace::SignalMessageTipNeeded);
  }
  editor_->SetModel(model_);
  editor_->SetController(controller_);
  return editor_;
}

bool CEditorPlace::Open(const Opening& opening) {
  const QPointer<CEditorPlace> alive(this), holder(Holder());
  if (!holder) {
    Show(opening);
    return true;
  }
  const int asked_in = session_;
  const bool free = holder->MayClose({this, session_, opening});
  if (!free || !alive || session_ != asked_in || !model_ || !controller_) {
    return false;
  }
  // While the question stood, what had waited for the first editor may have taken its place.
  CEditorPlace* const now = Holder();
  if (now && now != this) {
    if (now != holder) {
      Q_EMIT SignalMessageTipNeeded(tr("Another plan has been opened here meanwhile. Try again."),
                                    MarUIControl::CNomalMessage::Failure);
      return false;
    }
    now->OnClosed();
  }
  Show(opening);
  return true;
}

// Asks when there is something to lose. `next` waits from before the question: the save that it begins may be done by
// the time it returns. A plan that is being saved anyway is only waited for by a host that leaves.
bool CEditorPlace::MayClose(const Next& next) {
  const State before = CurrentState();
  std::optional<Next> asked_first;  // what waits for the answer to a question around this one
  if (before == State::Asking) {
    asked_first = next_;
  }
  const bool saving = before == State::Saving || before == State::Queued;
  if (!saving || !next.opening) {
    next_ = next;
  }
  const QPointer<CEditorPlace> alive(this);
  const int asked_in = session_;
  const bool free = editor_->MayClose();
  if (alive && session_ == asked_in && (free || CurrentState() != State::Queued)) {
    next_.reset();  // the user keeps what is there, or has heard why it cannot be saved
    if (!free) {
      next_ = asked_first;
    }
  }
  return free;
}

void CEditorPlace::Save() {
  if (IsOpen()) {
    editor_->Save();
  }
}

bool CEditorPlace::MayLeave() {
  if (!IsOpen()) {
    return true;
  }
  const QPointer<CEditorPlace> alive(this);
  const bool may_leave = MayClose({this, session_, {}});
  if (!alive) {
    return false;
  }
  if (may_leave) {
    OnClosed();
  }
  return may_leave;
}

void CEditorPlace::Show(const Opening& opening) {
  opening(Editor());
  WidgetKit::ShowDockWidget(InitSlidingRuleWidget());
  Q_EMIT SignalChanged();
}

void CEditorPlace::ShowNext(const Next& next) {
  if (session_ == next.session && model_ && controller_) {
    Show(next.opening);
  }
}

void CEditorPlace::OnClosed() {
  if (!editor_) {
    return;  // closed while its last question stood
  }
  const std::optional<Next> next = std::exchange(next_, std::nullopt);
  const bool is_ours = next && next->opening && next->place == this;
  if (is_ours && model_ && controller_) {
    ShowNext(*next);
    return;
  }
  const QPointer<CEditorPlace> alive(this);
  Hide();
  if (!next) {
    return;
  }
  if (!next->opening) {
    if (alive) {
      Q_EMIT SignalMayLeave();
    }
  } else if (next->place && !is_ours) {
    next->place->ShowNext(*next);
  }
}

void CEditorPlace::Hide() {
  const QWidget* focus = editor_->window()->focusWidget();
  const bool elsewhere = focus && focus != editor_ && !editor_->isAncestorOf(focus);
  WidgetKit::HideDockWidget(editor_);
  if (!elsewhere) {
    Q_EMIT SignalFocusFree();
  }
  Q_EMIT SignalChanged();
}

void CEditorPlace::Drop() {
  ++session_;
  next_.reset();
}

void CEditorPlace::Close() {
  WidgetKit::HideDockWidget(editor_);
  if (editor_) {
    editor_->disconnect(this);  // a save that is under way ends without the panel
    editor_->deleteLater();
    editor_ = nullptr;
  }
}

WidgetKit::CSlideOutData CEditorPlace::InitSlidingRuleWidget() {
  WidgetKit::CSlideOutData slide;
  slide.SetVal_slide_width(kEditorWidth);
  slide.SetVal_ptr_dock_widget(editor_);
  if (monitor_) {
    auto rule = std::make_shared<tarn_ui_data_controller::CDownloadSlideWidgetPosRule>();
    rule->SetPosAttachTo(monitor_);
    slide.SetVal_ptr_dock_pos_rule(rule);
  }
  return slide;
}

}  // namespace TarnPlanView
