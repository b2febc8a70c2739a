#include "saving/plan_saver.h"

#include <TarnPlanView/view_config_manager.h>
#include <TarnPlanView/view_save_menu.h>

#include <QPointer>
#include <algorithm>
#include <utility>

#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/nomal_message.h"
#include "MarUIControl/string_conversion.h"
#include "TarnUIDataController/skin_loader.h"
#include "host_calls/ask.h"
#include "plan_rules/update_request.h"
#include "plans/plan_family.h"
#include "saving/thumbnail.h"
#include "wall/live_wall.h"
#include "wall/same_pages.h"
#include "wall/wall_bar.h"

namespace TarnClient {

using MarUIControl::CNomalMessage;
using MarUIControl::StringToQString;
using TarnPlanView::CStandardViewController;
using TarnPlanView::CViewExternWidget;
using TarnPlanView::CViewSaveMenu;
using namespace view_plugin_protocol;

namespace {

constexpr int kDialogWidth = 288;

QColor Ground() {
  return tarn_ui_data_controller::CSkinLoader::Instance().GetColor(QStringLiteral("wall"));
}

}  // namespace

CPlanSaver::CPlanSaver(CLiveWall* wall, std::function<CPlanFamily&()> current, QObject* parent)
    : QObject(parent), wall_(wall), current_(std::move(current)) {
  connect(wall_, &CLiveWall::SignalPlanChanged, this, [this] {
    DropOnceMore();
    Renew();
  });
  connect(wall_, &CLiveWall::SignalPlanRenewed, this, &CPlanSaver::Renew);
  connect(wall_, &CLiveWall::SignalArrangementChanged, this, &CPlanSaver::Renew);
}

void CPlanSaver::Attach(CPlanFamily* family) {
  families_.append(family);
  connect(family, &QObject::destroyed, this, [this, family] { families_.removeOne(family); });
  connect(family->Panel(), &CViewExternWidget::SignalSavePlanAs, this, [this, family] { OnSaveAsConfirmed(family); });
  connect(family->Panel(), &CViewExternWidget::SignalEditorChanged, this, &CPlanSaver::Renew);
  if (family->Controller()) {
    connect(family->Controller(), &QObject::destroyed, this, [this] { saving_ = Saving::No; });  // no answer comes
    connect(family->Controller(), &CStandardViewController::SignalAddPlanSucc, this, &CPlanSaver::OnAdded);
  }
  Renew();
}

void CPlanSaver::Watch(const CPlanFamily* family) {
  connect(family->Panel(), &CViewExternWidget::SignalEditorChanged, this, &CPlanSaver::Renew);
}

CPlanFamily* CPlanSaver::FamilyOfPlan() const {
  for (CPlanFamily* family : families_) {
    if (family->Theme() == wall_->Plan().type && family->Controller()) {
      return family;
    }
  }
  return nullptr;
}

bool CPlanSaver::IsEditing() const {
  return std::any_of(families_.begin(), families_.end(),
                     [](const CPlanFamily* family) { return family->Panel()->IsEditorOpen(); });
}

QString CPlanSaver::WhyNotSave() const {
  if (!wall_->IsPlaying()) {
    return tr("no plan is playing");
  }
  const CPlanFamily* family = FamilyOfPlan();
  if (!family) {
    return tr("this plan cannot be changed from here");
  }
  if (IsEditing()) {
    return tr("the plan editor is open, and Ctrl+S saves there");
  }
  if (CViewExternWidget::IsPlanEdited(wall_->PlanCode())) {
    return tr("the plan is open in the editor over another wall");
  }
  if (!family->MayEdit()) {
    return tr("you need the right to edit public plans");
  }
  return QString();
}

QString CPlanSaver::WhyNotSaveAs() const {
  const std::list<PlanPage> pages = wall_->Arrangement().PagesToSave();
  const bool filled =
      std::any_of(pages.begin(), pages.end(), [](const PlanPage& page) { return HoldsSomething(page); });
  if (!filled) {
    return tr("the live view is empty");
  }
  return QString();
}

void CPlanSaver::Renew() {
  Q_EMIT SignalReasons(WhyNotSave(), WhyNotSaveAs());
}

void CPlanSaver::ShowMenu(const QString& save_tip, const QString& save_as_tip) {
  if (!menu_) {
    menu_ = new CViewSaveMenu(wall_);
    connect(menu_, &CViewSaveMenu::SignalViewMenuTriggered, this, &CPlanSaver::OnMenu);
  }
  menu_->SetTips(save_tip, save_as_tip);
  menu_->SetActionVisible(TarnPlanView::SaveView, WhyNotSave().isEmpty());
  menu_->SetActionVisible(TarnPlanView::SaveAsView, WhyNotSaveAs().isEmpty());
  menu_->ShowPopupMenu(wall_->Bar()->SavePlace(menu_->width()));
}

void CPlanSaver::OnMenu(TarnPlanView::ViewSaveActions action) {
  if (action == TarnPlanView::SaveView) {
    Save();
  } else {
    SaveAs();
  }
}

// Null when plans have no thumbnails.
QImage CPlanSaver::Picture() const {
  if (!TarnPlanView::CViewConfigManager::Instance().SupportThumbnail()) {
    return QImage();
  }
  return wall_->Picture();
}

// An empty wall has nothing to lose.
void CPlanSaver::RefuseCommand(const QString& why_not) {
  const auto state = wall_->IsPlaying() ? CNomalMessage::Failure : CNomalMessage::Hint;
  Q_EMIT SignalMessage(tr("Not saved: %1.").arg(why_not), state);
}

void CPlanSaver::Save() {
  const QString why_not = WhyNotSave();
  if (!why_not.isEmpty()) {
    return RefuseCommand(why_not);
  }
  if (saving_ != Saving::No) {
    saving_ = Saving::AndOnceMore;
    return;
  }
  saving_ = Saving::UnderWay;
  GetPlanDetailRequest request;
  request.plan_index_code = wall_->Plan().index_code;
  const auto fetch = [request, picture = Picture(), ground = Ground()] {
    auto fresh = HostCalls::CallNow(&LyraPluginManager::CViewBusinessInterfaceMgr::GetPlanDetail, request);
    fresh.response.thumbnail = ThumbnailOf(picture, ground);
    return fresh;
  };
  HostCalls::Ask(fetch).Within(look_).Then(this, [this, code = request.plan_index_code](const FreshPlan& fresh) {
    const QString refusal = WhyNotSave(fresh, code);
    if (refusal.isEmpty()) {
      Send(fresh.response);
    } else {
      saving_ = Saving::No;
      Q_EMIT SignalMessage(refusal, CNomalMessage::Failure);
    }
  });
}

QString CPlanSaver::WhyNotSave(const FreshPlan& fresh, const std::string& code) const {
  if (!fresh.ok) {
    return StringToQString(fresh.response.error_info);
  }
  if (!FamilyOfPlan() || wall_->Plan().index_code != code) {
    return tr("Not saved: the plan was stopped meanwhile.");
  }
  if (IsEditing() || CViewExternWidget::IsPlanEdited(StringToQString(code))) {
    return tr("Not saved: %1.").arg(WhyNotSave());  // opened meanwhile
  }
  if (!SamePages(fresh.response.pages, wall_->Plan().pages)) {
    return tr("Not saved: the plan was changed elsewhere. Play it again first.");
  }
  return QString();
}

// The fresh record brings name, group, times and revision: others may have changed them while the plan played, and its
// row in the tree may not know yet.
void CPlanSaver::Send(const GetPlanDetailResponse& fresh) {
  UpdatePlanRequest request = UpdateRequestFrom(fresh);
  request.pages = wall_->Arrangement().PagesToSave();
  sent_ = Sent{wall_->Plan(), request.pages};
  saving_ = Saving::UnderWay;  // whatever was wanted until now is in it
  const auto answer = [saver = QPointer<CPlanSaver>(this)](const TarnPlanView::CallAnswer& how) {
    if (saver) {
      saver->OnSent(how.ok);
    }
  };
  FamilyOfPlan()->Controller()->UpdatePlanParam(request, StringToQString(fresh.name), answer);
}

// The plan comes again only later, or not at all; what the user has changed by then builds on his own save.
void CPlanSaver::OnSent(bool ok) {
  const std::optional<Sent> sent = std::exchange(sent_, std::nullopt);
  const bool once_more = std::exchange(saving_, Saving::No) == Saving::AndOnceMore;
  if (ok && sent) {
    if (wall_->Arrangement().RestsOn(sent->plan)) {
      wall_->Saved(sent->pages);
    }
    Q_EMIT SignalSaved(sent->plan, sent->pages);
  }
  if (ok && once_more && wall_->Arrangement().IsChanged()) {
    Save();
  }
}

// Something else is on the wall.
void CPlanSaver::DropOnceMore() {
  if (saving_ == Saving::AndOnceMore) {
    saving_ = Saving::UnderWay;
  }
}

void CPlanSaver::SaveAs() {
  const QString why_not = WhyNotSaveAs();
  if (!why_not.isEmpty()) {
    return RefuseCommand(why_not);
  }
  pending_ = {};
  pending_.pages = wall_->Arrangement().PagesToSave();
  pending_picture_ = Picture();
  current_().Panel()->OnPopupSavePlanAsDlg(wall_->Bar()->SavePlace(kDialogWidth));
}

void CPlanSaver::OnSaveAsConfirmed(CPlanFamily* family) {
  AddPlanRequest request = pending_;
  if (request.pages.empty() || !family->Controller()) {
    return;
  }
  family->Panel()->GetSaveAsPlanInfo(request);
  HostCalls::Ask([picture = pending_picture_, ground = Ground()] { return ThumbnailOf(picture, ground); })
      .Within(new_plans_)
      .Then(this, [controller = QPointer<CStandardViewController>(family->Controller()),
                   request](const std::string& thumbnail) {
        if (controller) {
          AddPlanRequest whole = request;
          whole.thumbnail = thumbnail;
          controller->AddPlanParam(whole);
        }
      });
}

void CPlanSaver::OnAdded(const AddPlanRequest& plan, const QString& code) {
  const CArrangement& arrangement = wall_->Arrangement();
  if (arrangement.IsChanged() && SamePages(plan.pages, arrangement.PagesToSave())) {
    Q_EMIT SignalSavedAsNew(code);
  }
}

// What is not sent yet would be made or changed in the next user's name.
void CPlanSaver::ForgetUser() {
  const bool is_unsent = new_plans_.IsUnderWay() || look_.IsUnderWay();
  if (look_.IsUnderWay()) {
    saving_ = Saving::No;
  }
  look_.Drop();
  sent_.reset();
  DropOnceMore();
  new_plans_.Drop();
  pending_ = {};
  pending_picture_ = QImage();
  if (is_unsent) {
    Q_EMIT SignalMessage(tr("Not saved: the user was switched meanwhile."), CNomalMessage::Failure);
  }
  Renew();
}

}  // namespace TarnClient
