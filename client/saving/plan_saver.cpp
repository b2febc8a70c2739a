#include "saving/plan_saver.h"

#include <TarnPlanView/view_config_manager.h>
#include <TarnPlanView/view_save_menu.h>

#include <QPointer>
#include <algorithm>

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
  connect(wall_, &CLiveWall::SignalPlanChanged, this, &CPlanSaver::Renew);
  connect(wall_, &CLiveWall::SignalPlanRenewed, this, &CPlanSaver::Renew);
  connect(wall_->Bar(), &CWallBar::SignalSave, this, &CPlanSaver::Save);
  connect(wall_->Bar(), &CWallBar::SignalSaveMenu, this, &CPlanSaver::ShowMenu);
}

void CPlanSaver::Attach(CPlanFamily* family) {
  families_.append(family);
  connect(family, &QObject::destroyed, this, [this, family] { families_.removeOne(family); });
  connect(family->Panel(), &CViewExternWidget::SignalSavePlanAs, this, [this, family] { OnSaveAsConfirmed(family); });
  connect(family->Panel(), &CViewExternWidget::SignalEditorChanged, this, &CPlanSaver::Renew);
  if (family->Controller()) {
    connect(family->Controller(), &QObject::destroyed, this, [this] { saving_ = false; });  // and no answer comes
  }
  Renew();
}

CPlanFamily* CPlanSaver::FamilyOfPlan() const {
  const auto theme = wall_->Plan().type;
  const auto found = std::find_if(families_.begin(), families_.end(),
                                  [theme](const CPlanFamily* family) { return family->Theme() == theme; });
  return found != families_.end() && (*found)->Controller() ? *found : nullptr;
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
  return family->MayEdit() ? QString() : tr("you need the right to edit public plans");
}

QString CPlanSaver::WhyNotSaveAs() const {
  const std::list<PlanPage>& pages = wall_->Plan().pages;
  const bool filled =
      std::any_of(pages.begin(), pages.end(), [](const PlanPage& page) { return HoldsSomething(page); });
  return filled ? QString() : tr("the live view is empty");
}

void CPlanSaver::Renew() {
  const QString save = WhyNotSave(), save_as = WhyNotSaveAs();
  wall_->Bar()->ShowSaving(save, save.isEmpty() ? QString() : save_as);
}

void CPlanSaver::ShowMenu() {
  if (!menu_) {
    menu_ = new CViewSaveMenu(wall_);
    connect(menu_, &CViewSaveMenu::SignalViewMenuTriggered, this, &CPlanSaver::OnMenu);
  }
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
  return TarnPlanView::CViewConfigManager::Instance().SupportThumbnail() ? wall_->Picture() : QImage();
}

void CPlanSaver::Save() {
  const QString why_not = WhyNotSave();
  if (!why_not.isEmpty()) {
    Q_EMIT SignalMessage(tr("Not saved: %1.").arg(why_not), CNomalMessage::Failure);
    return;
  }
  if (saving_) {
    return;
  }
  saving_ = true;
  const auto fetch = [code = wall_->Plan().index_code, picture = Picture(), ground = Ground()] {
    Fresh fresh;
    GetPlanDetailRequest detail;
    detail.plan_index_code = code;
    fresh.ok = LyraPluginManager::CViewBusinessInterfaceMgr::Instance().GetPlanDetail(detail, fresh.plan);
    fresh.thumbnail = ThumbnailOf(picture, ground);
    return fresh;
  };
  HostCalls::Ask(fetch).Then(this, [this, code = wall_->Plan().index_code,
                                    pages = wall_->Plan().pages](const Fresh& fresh) { OnFresh(fresh, code, pages); });
}

// The fresh record brings name, group, times and revision: others may have changed them while the plan played, and its
// row in the tree may not know yet.
void CPlanSaver::OnFresh(const Fresh& fresh, const std::string& code,
                         const std::list<view_plugin_protocol::PlanPage>& pages) {
  const auto refuse = [this](const QString& text) {
    saving_ = false;
    Q_EMIT SignalMessage(text, CNomalMessage::Failure);
  };
  if (!fresh.ok) {
    return refuse(StringToQString(fresh.plan.error_info));
  }
  CPlanFamily* family = FamilyOfPlan();
  if (!family || wall_->Plan().index_code != code) {
    return refuse(tr("Not saved: the plan was stopped meanwhile."));
  }
  if (IsEditing()) {
    return refuse(tr("Not saved: %1.").arg(WhyNotSave()));  // opened meanwhile
  }
  if (!SamePages(fresh.plan.pages, wall_->Plan().pages)) {
    return refuse(tr("Not saved: the plan was changed elsewhere. Play it again first."));
  }
  UpdatePlanRequest request = UpdateRequestFrom(fresh.plan);
  request.pages = pages;
  request.thumbnail = fresh.thumbnail;
  family->Controller()->UpdatePlanParam(request, StringToQString(fresh.plan.name),
                                        [saver = QPointer<CPlanSaver>(this)](bool, const QString&) {
                                          if (saver) {
                                            saver->saving_ = false;
                                          }
                                        });
}

void CPlanSaver::SaveAs() {
  const QString why_not = WhyNotSaveAs();
  if (!why_not.isEmpty()) {
    Q_EMIT SignalMessage(tr("Not saved: %1.").arg(why_not), CNomalMessage::Failure);
    return;
  }
  pending_ = {};
  pending_.pages = wall_->Plan().pages;
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

// A plan that is not sent yet would be made in the next user's name.
void CPlanSaver::ForgetUser() {
  const bool is_adding = new_plans_.IsUnderWay();
  new_plans_.Drop();
  pending_ = {};
  pending_picture_ = QImage();
  if (is_adding) {
    Q_EMIT SignalMessage(tr("Not saved: the user was switched meanwhile."), CNomalMessage::Failure);
  }
  Renew();
}

}  // namespace TarnClient
