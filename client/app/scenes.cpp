#include "app/scenes.h"

#include <TarnPlanView/default_load_view_display.h>
#include <TarnPlanView/plan_view_tree.h>
#include <TarnPlanView/view_extern_widget.h>

#include <QAbstractButton>
#include <QAction>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>

#include "MarUIControl/string_conversion.h"
#include "TarnHost/host_services.h"
#include "TarnUIDataController/msg_type.h"
#include "TarnUIDataController/popup_menu.h"
#include "WidgetKit/new_location_combo_box.h"
#include "WidgetKit/new_location_view_widget.h"
#include "marlog/marlog.h"
#include "plans/plan_family.h"
#include "settings/settings_dialog.h"
#include "wall/live_wall.h"
#include "window/main_window.h"

namespace TarnClient {

namespace {

constexpr int kStepMs = 10;

}  // namespace

void CScene::Press(QWidget* widget, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
  QCoreApplication::sendEvent(widget, &press);
  QCoreApplication::sendEvent(widget, &release);
}

const std::vector<CScene::Entry>& CScene::Entries() {
  static const std::vector<Entry> entries{
      {"browse", &CScene::Browse},
      {"search", &CScene::Search},
      {"search-empty", &CScene::SearchWithoutHit},
      {"search-camera", &CScene::SearchCamera},
      {"search-menu", &CScene::SearchMenu},
      {"search-running", &CScene::SearchRunning},
      {"search-last", &CScene::LastSearches},
      {"name-editor", &CScene::NameEditor},
      {"row-menu", &CScene::RowMenu},
      {"group-menu", &CScene::GroupMenu},
      {"row-menu-guard", &CScene::RowMenuGuard},
      {"hit-menu", &CScene::HitMenu},
      {"rename-plan", &CScene::RenamePlan},
      {"move-to", &CScene::MoveTo},
      {"signs", &CScene::Signs},
      {"preview-tour", &CScene::TourPreview},
      {"first-start", &CScene::FirstStart},
      {"delete-question", &CScene::DeleteQuestion},
      {"delete-question-group", &CScene::DeleteQuestionOfGroup},
      {"undo-deletion", &CScene::UndoDeletion},
      {"undo-move", &CScene::UndoMove},
      {"share", &CScene::Share},
      {"creation-info", &CScene::CreationInfo},
      {"save-menu", &CScene::SaveMenu},
      {"save-as", &CScene::SaveAs},
      {"refusal", &CScene::Refusal},
      {"history", &CScene::History},
      {"history-empty", &CScene::HistoryEmpty},
      {"history-gone", &CScene::HistoryGone},
      {"users", &CScene::Users},
      {"group-cycle", &CScene::Cycle},
      {"settings", &CScene::Settings},
      {"site-cameras", &CScene::SiteCameras},
      {"camera-form", &CScene::CameraForm},
      {"camera-removal", &CScene::CameraRemoval},
      {"camera-import", &CScene::CameraImport},
      {"camera-export", &CScene::CameraExport},
      {"region-form", &CScene::RegionForm},
      {"device-form", &CScene::DeviceForm},
      {"authority-form", &CScene::AuthorityForm},
      {"default-view", &CScene::DefaultView},
      {"default-view-search", &CScene::DefaultViewSearch},
      {"drop", &CScene::Drop},
      {"plan-editor", &CScene::PlanEditor},
      {"plan-editor-new", &CScene::PlanEditorNew},
      {"plan-editor-cameras", &CScene::PlanEditorCameras},
      {"plan-editor-conflict", &CScene::PlanEditorConflict},
      {"plan-editor-question", &CScene::PlanEditorQuestion},
      {"plan-editor-changed-elsewhere", &CScene::PlanEditorChangedElsewhere},
      {"plan-editor-deleted-elsewhere", &CScene::PlanEditorDeletedElsewhere},
      {"plan-editor-theirs", &CScene::PlanEditorTheirs},
      {"plan-editor-times", &CScene::PlanEditorTimes},
      {"plan-editor-long-names", &CScene::PlanEditorLongNames},
      {"stopped", &CScene::Stopped},
      {"automatic", &CScene::Automatic},
      {"automatic-ended", &CScene::AutomaticEnded},
      {"play-failed", &CScene::Failed},
      {"long-title", &CScene::LongTitle},
      {"narrow", &CScene::Narrow},
      {"closing-question", &CScene::ClosingQuestion},
      {"settings-damaged", &CScene::Browse},
      {"history-long", &CScene::LongHistory},
      {"preview", &CScene::Preview},
      {"focus-tabs", &CScene::FocusOnTabs},
      {"focus-tree", &CScene::FocusOnTree},
      {"long-tip", &CScene::LongTip},
      {"long-question", &CScene::LongQuestion},
      {"help", &CScene::Help},
      {"about", &CScene::About},
      {"menu", &CScene::Menu},
      {"messages", &CScene::Messages},
      {"tip-success", &CScene::TipSuccess},
      {"tip-error", &CScene::TipError},
      {"tip-warning", &CScene::TipWarning},
      {"tip-hint", &CScene::TipHint},
      {"second-wall", &CScene::SecondWall},
      {"play-on", &CScene::PlayOnMenu},
      {"closing-all", &CScene::ClosingAllQuestion},
      {"cameras", &CScene::Cameras},
      {"cameras-empty", &CScene::CamerasWithoutHit},
      {"arranged", &CScene::Arranged},
      {"arranged-without-plan", &CScene::ArrangedWithoutPlan},
      {"arrangement-back", &CScene::BackToArrangement},
      {"window-enlarged", &CScene::Enlarged},
      {"window-zoomed", &CScene::Zoomed},
      {"window-menu", &CScene::WindowMenu},
      {"window-states", &CScene::WindowStates},
      {"window-states-small", &CScene::WindowStatesSmall},
      {"log-in", &CScene::LogInDemo},
      {"log-in-wrong", &CScene::LogInWrong},
      {"log-in-copy", &CScene::LogInAtCopy},
      {"desk-locked", &CScene::DeskLocked},
      {"desk-unlock", &CScene::DeskUnlock},
      {"desk-old-password", &CScene::DeskOfOldPassword},
      {"desk-locked-editor", &CScene::DeskLockedWithEditor},
      {"site-users", &CScene::SiteUsersPage},
      {"user-form", &CScene::UserForm},
      {"user-group-form", &CScene::UserGroupForm},
      {"limit-form", &CScene::LimitForm},
      {"wait", &CScene::Wait},
  };
  return entries;
}

QStringList CScene::Names() {
  QStringList names;
  for (const Entry& entry : Entries()) {
    names << QString::fromLatin1(entry.name);
  }
  return names;
}

CScene::CScene(const QString& name, CMainWindow* window, const QString& store_url)
    : window_(window), store_url_(store_url) {
  for (const Entry& entry : Entries()) {
    if (name == QLatin1String(entry.name)) {
      (this->*entry.script)();
    }
  }
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &CScene::Next);
  timer_.start(kStepMs);
}

// The step is taken off, and the next one awaited, before it runs: a modal box keeps it inside.
void CScene::Next() {
  if (steps_.empty()) {
    marlog::Write("LyraClientInfo", marlog::Info, "The scene is set");
    return;
  }
  const Step step = steps_.front();
  steps_.pop_front();
  timer_.start(kStepMs);
  if (!step()) {
    steps_.push_front(step);
  }
}

QModelIndex CScene::Row(const QString& name) const {
  const QAbstractItemModel* rows = window_->CurrentFamily().Panel()->GetPlanViewTree()->model();
  if (!rows || rows->rowCount() == 0) {
    return QModelIndex();
  }
  const auto exactly = Qt::MatchExactly | Qt::MatchRecursive;
  return rows->match(rows->index(0, 0), Qt::DisplayRole, name, 1, exactly).value(0);
}

void CScene::AddExpansion(const QString& group) {
  Add([this, group] {
    auto* tree = window_->CurrentFamily().Panel()->GetPlanViewTree();
    const QModelIndex row = Row(group);
    if (row.isValid() && !tree->isExpanded(row)) {
      tree->ExpandAsync(row);
    }
    return row.isValid() && tree->isExpanded(row);
  });
}

void CScene::AddCurrent(const QString& name) {
  Add([this, name] {
    auto* tree = window_->CurrentFamily().Panel()->GetPlanViewTree();
    tree->setCurrentIndex(Row(name));
    tree->setFocus(Qt::ShortcutFocusReason);
    return tree->currentIndex().isValid();
  });
}

void CScene::AddClick(const QString& button) {
  Add([this, button] {
    window_->CurrentFamily().Panel()->findChild<QAbstractButton*>(button)->click();
    return true;
  });
}

void CScene::AddMenu() {
  Add([this] {
    Press(window_->CurrentFamily().Panel()->GetPlanViewTree(), Qt::Key_Menu);
    return true;
  });
}

void CScene::AddMenuCommand(int command) {
  AddMenu();
  Add([this, command] {
    auto* menu = window_->CurrentFamily().Panel()->GetViewMoreMenu();
    QAction* action = menu->MenuItem(static_cast<tarn_ui_data_controller::MsgType>(command));
    menu->hide();
    action->trigger();
    return true;
  });
}

void CScene::AddSearch(const QString& text) {
  Add([this, text] {
    auto* field = qobject_cast<QLineEdit*>(window_->CurrentFamily().Panel()->GetLocateViewWidget());
    field->setFocus(Qt::ShortcutFocusReason);
    field->setText(text);
    Press(field, Qt::Key_Return);
    return true;
  });
}

void CScene::AddPlay(const QString& name) {
  AddCurrent(name);
  Add([this] {
    Press(window_->CurrentFamily().Panel()->GetPlanViewTree(), Qt::Key_Return);
    return true;
  });
  Add([this, name] { return window_->Wall().PlanName() == name; });
}

void CScene::Browse() {
  AddExpansion(QStringLiteral("Perimeter"));
  AddExpansion(QStringLiteral("Gates"));
}

void CScene::NameEditor() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddClick(QStringLiteral("add_group_btn"));
}

void CScene::RowMenu() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  AddMenu();
}

void CScene::GroupMenu() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddMenu();
}

void CScene::DeleteQuestion() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  AddClick(QStringLiteral("delete_btn"));
}

void CScene::Share() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  AddMenuCommand(tarn_ui_data_controller::Share);
}

void CScene::CreationInfo() {
  Browse();
  AddCurrent(QStringLiteral("Gate overview"));
  AddMenuCommand(tarn_ui_data_controller::CreationInfo);
}

void CScene::SaveMenu() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    window_->OpenSaveMenu();
    return true;
  });
}

void CScene::SaveAs() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    window_->SaveAs();
    return true;
  });
}

void CScene::Refusal() {
  Browse();
  Add([this] {
    window_->Save();
    return true;
  });
}

void CScene::History() {
  Browse();
  AddExpansion(QStringLiteral("Tours"));
  for (const char* plan : {"Night patrol", "Whole site", "Gate overview"}) {
    AddPlay(QString::fromLatin1(plan));
  }
  HistoryEmpty();
}

void CScene::HistoryEmpty() {
  Add([this] {
    window_->OpenHistory();
    return true;
  });
}

void CScene::Users() {
  Browse();
  Add([this] {
    window_->OpenUsers();
    return true;
  });
}

void CScene::Cycle() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddMenuCommand(tarn_ui_data_controller::GroupCycle);
}

void CScene::Settings() {
  Browse();
  Add([this] {
    window_->OpenSettings();
    return true;
  });
}

void CScene::DefaultView() {
  Settings();
  Add([this] {
    auto* box = window_->Settings()->DefaultView()->GetLocationComboBox();
    Press(box, Qt::Key_Space);
    return box->IsPopupVisible();
  });
}

void CScene::DefaultViewSearch() {
  DefaultView();
  Add([this] {
    auto* line = window_->Settings()->DefaultView()->GetLocationComboBox()->SearchLine();
    line->setText(QStringLiteral("overview"));
    return true;
  });
  Add([this] {
    const auto* line = window_->Settings()->DefaultView()->GetLocationComboBox()->SearchLine();
    return !line->IsLocating() && line->HitCount() > 0;
  });
}

void CScene::Drop() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  Add([this] {
    const QString station = MarUIControl::StringToQString(TarnHost::InstalledHostServices()->StationId());
    const QJsonObject plan{{"_source_id_", "1"},
                           {"_station_id_", station},
                           {"_source_type_", "_type_view_"},
                           {"_normal_resource", QJsonObject{{"name", "Gates overview"}}}};
    QMimeData data;
    data.setData(QStringLiteral("_drag_json_data_"), QJsonDocument(QJsonArray{plan}).toJson());
    CLiveWall& wall = window_->Wall();
    QDragEnterEvent enter(wall.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&wall, &enter);
    return true;
  });
}

void CScene::Preview() {
  Browse();
  AddHover(QStringLiteral("Gate overview"));
}

// The download is held back by an option of its own.
void CScene::Wait() {}

}  // namespace TarnClient
