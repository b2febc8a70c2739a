#include "app/scenes.h"

#include <TarnPlanView/view_extern_widget.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimeEdit>
#include <memory>

#include "ResourceTreeKit/camera_tree.h"
#include "TarnHost/plan_store.h"
#include "plan_rules/update_request.h"
#include "plans/plan_family.h"
#include "window/main_window.h"

namespace TarnClient {

using ResourceTreeKit::CCameraTree;

namespace {

const QString kPlan = QStringLiteral("Whole site");

/// Another workstation over the same store, with a user who may change plans.
std::shared_ptr<TarnHost::CPlanStore> AnotherWorkstation(const QString& store_url, const char* user) {
  TarnHost::PlanStoreOptions options;
  options.url = store_url;
  QString error;
  auto store = TarnHost::CPlanStore::Open(options, &error);
  if (!store || !store->LogIn({QString::fromLatin1(user)}).IsDone()) {
    qWarning("%s", qPrintable(error));
    return nullptr;
  }
  return store;
}

bool ChangePlan(TarnHost::CPlanStore& store) {
  view_plugin_protocol::GetPlanDetailRequest question;
  question.plan_index_code = store.FindPlanByName(kPlan);
  view_plugin_protocol::GetPlanDetailResponse plan;
  if (!store.GetPlanDetail(question, plan)) {
    return false;
  }
  plan.pages.back().dwell_seconds += 5;
  plan.name += " with the car park";
  view_plugin_protocol::UpdatePlanResponse response;
  return store.UpdatePlan(UpdateRequestFrom(plan), response);
}

bool DeletePlan(TarnHost::CPlanStore& store) {
  view_plugin_protocol::DeletePlanResquest request;
  request.plan_index_code = store.FindPlanByName(kPlan);
  view_plugin_protocol::DeletePlanResponse response;
  return !request.plan_index_code.empty() && store.DeletePlan(request, response);
}

}  // namespace

template <class Widget>
Widget* CScene::InEditor(const char* name) const {
  auto* editor = window_->findChild<QWidget*>(QStringLiteral("add_edit_plan_widget"));
  return editor ? editor->template findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
}

void CScene::AddEditor() {
  Browse();
  AddExpansion(QStringLiteral("Tours"));
  AddCurrent(kPlan);
  AddClick(QStringLiteral("edit_btn"));
  Add([this] {
    const auto* cameras = InEditor<CCameraTree>("camera_tree");
    const auto* name = InEditor<QLineEdit>("plan_name_edit");
    return cameras && cameras->IsLoaded() && name && name->text() == kPlan;
  });
}

void CScene::AddEditedName(const QString& name) {
  Add([this, name] {
    InEditor<QLineEdit>("plan_name_edit")->setText(name);
    return true;
  });
}

void CScene::PlanEditor() {
  AddEditor();
  Add([this] {
    auto* cameras = InEditor<CCameraTree>("camera_tree");
    const QModelIndex site = cameras->model()->index(0, 0);
    cameras->expand(cameras->model()->index(1, 0, site));
    return true;
  });
}

void CScene::PlanEditorNew() {
  Browse();
  AddCurrent(QStringLiteral("Gates"));
  AddClick(QStringLiteral("add_view_btn"));
}

void CScene::PlanEditorCameras() {
  AddEditor();
  Add([this] {
    InEditor<QLineEdit>("camera_search")->setText(QStringLiteral("fence"));
    return true;
  });
}

// The plans of a store that was just opened come in by themselves, so a step is tried again until they are there.
void CScene::AddChangeElsewhere() {
  Add([this, other = std::shared_ptr<TarnHost::CPlanStore>()]() mutable {
    if (!other) {
      other = AnotherWorkstation(store_url_, "supervisor");
    }
    return !other || ChangePlan(*other);
  });
}

void CScene::AddDeletionElsewhere() {
  Add([this, other = std::shared_ptr<TarnHost::CPlanStore>()]() mutable {
    if (!other) {
      other = AnotherWorkstation(store_url_, "operator");
    }
    return !other || DeletePlan(*other);
  });
}

void CScene::AddConflictShown() {
  Add([this] { return InEditor<QWidget>("conflict_bar")->isVisible(); });
}

// Saved in the same moment, before any notice could come.
void CScene::PlanEditorConflict() {
  AddEditor();
  AddEditedName(QStringLiteral("Whole site by night"));
  AddChangeElsewhere();
  Add([this] {
    InEditor<QAbstractButton>("save_plan_btn")->click();
    return true;
  });
  AddConflictShown();
}

void CScene::PlanEditorChangedElsewhere() {
  AddEditor();
  AddEditedName(QStringLiteral("Whole site by night"));
  AddChangeElsewhere();
  AddConflictShown();
}

void CScene::PlanEditorDeletedElsewhere() {
  AddEditor();
  AddDeletionElsewhere();
  AddConflictShown();
}

void CScene::PlanEditorTheirs() {
  PlanEditorChangedElsewhere();
  Add([this] {
    InEditor<QAbstractButton>("load_theirs_btn")->click();
    return true;
  });
}

void CScene::PlanEditorTimes() {
  AddEditor();
  Add([this] {
    InEditor<QAbstractButton>("auto_run_switch")->click();
    auto* begin = InEditor<QWidget>("auto_run_times")->findChild<QTimeEdit*>();
    begin->setFocus(Qt::TabFocusReason);
    for (const int key : {Qt::Key_2, Qt::Key_1, Qt::Key_0, Qt::Key_5}) {
      QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QChar(key));
      QCoreApplication::sendEvent(begin, &press);
    }
    return true;
  });
}

void CScene::PlanEditorLongNames() {
  AddEditor();
  const QString words = QStringLiteral("Whole site with every gate, fence, ramp and door by night and at weekends");
  AddEditedName(words + QStringLiteral(", once more: ") + words.toLower());
  Add([this] {
    InEditor<QWidget>("window_grid")->setFocus();
    Q_EMIT InEditor<QLineEdit>("plan_name_edit")->editingFinished();  // which an inactive window does not do
    return true;
  });
}

void CScene::PlanEditorQuestion() {
  AddEditor();
  AddEditedName(QStringLiteral("Whole site by night"));
  Add([this] {
    InEditor<QAbstractButton>("cancel_plan_btn")->click();
    return true;
  });
}

}  // namespace TarnClient
