#pragma once

#include <QList>
#include <memory>
#include <string>

#include "TarnConfiguration/view_config_interface.h"
#include "change_journal.h"
#include "download_poll.h"
#include "observer_table.h"
#include "row_record.h"
#include "unanswered_questions.h"
#include "view.h"
#include "view_group.h"
#include "view_group_manager.h"
#include "view_model_data_manager.h"
#include "view_watch.h"

namespace TarnPlanView {

constexpr int kRegister = 1;
constexpr int kUnregister = 0;

/// The row just after the leading group rows: groups stay above plans.
int RowAfterGroups(const QStandardItem* parent);

/// Records of those children that a model with the parent's row lacks, or shows under another name: a notice is about
/// one child, the answer to it about all.
RowRecords RecordsToShow(const QList<CStandardPlanModel*>& models, const QString& parent_code,
                         const QList<view_plugin_protocol::PlanGroup>& groups);
RowRecords RecordsToShow(const QList<CStandardPlanModel*>& models, const QString& parent_code,
                         const QList<view_plugin_protocol::PlanBasicInfo>& plans);

/// Puts the rows that the model does not have yet below all that `parent` has, the plan that plays in the model marked.
void AppendChildren(const CStandardPlanModel* model, QStandardItem* parent, const RowRecords& groups,
                    const RowRecords& plans);
void AppendPlan(const CStandardPlanModel* model, QStandardItem* parent, const CRowRecord::Ptr& plan);

/// State of the manager, shared by its source files.
class CViewModelDataManager::Private {
 public:
  explicit Private(CViewModelDataManager* manager) : poll(new CDownloadPoll(manager)) {}

  QList<CStandardPlanModel*> own_models;  // the nine; children of the manager
  QList<CStandardPlanModel*> models;      // registered, in order
  bool ended = false;                     // by UninitManager(): answers that come late are of no tree
  bool data_requested = false;
  bool init_finished = false;
  CChangeJournal changes;
  ChildRecords offered;
  int notice_count = 0;
  CDownloadPoll* poll;  // child of the manager
  CUnansweredQuestions unanswered;
  std::unique_ptr<CViewGroupManager> group_manager;
  CObserverTable<CViewWatch> views;
  CObserverTable<CViewGroup> groups;
  std::string fresh_group;  // the one whose observer was made for the notice that is being handled
  std::shared_ptr<TarnConfiguration::IViewConfigInterface> view_config;
  view_plugin_protocol::GetClientDefaultViewConfigResponse default_view;
  view_plugin_protocol::ClienDefaultViewConfigReponse default_view_set;
};

}  // namespace TarnPlanView
