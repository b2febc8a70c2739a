#include "desk_work.h"

#include <QJsonArray>
#include <chrono>
#include <utility>

#include "LyraPluginManager/error_kind.h"
#include "plan_records.h"

namespace view = view_plugin_protocol;
using TarnTest::Page;

namespace {

constexpr int kPauseMs = 120, kHotPlans = 4;
constexpr size_t kMostPages = 150, kMostPlans = 120, kMostGroups = 25;
const char kRoot[] = "-1";

QJsonObject Question(const char* what, const std::string& code) {
  return {{"do", what}, {"code", QString::fromStdString(code)}};
}

QJsonArray NamesOf(const std::list<view::PlanPage>& pages) {
  QJsonArray names;
  for (const view::PlanPage& page : pages) {
    names.append(QString::fromStdString(page.name));
  }
  return names;
}

// All other failures say that nothing was saved.
bool IsCertainlyNotSaved(const view::ResponseHeader& response) {
  const QString text = QString::fromStdString(response.error_info);
  return response.error_kind != view::UnknownFailure && !text.contains("does not answer") &&
         !text.contains("Look whether it is there");
}

template <class Row>
QJsonObject RowOf(const Row& row, const std::string& parent, int pages) {
  return {{"code", QString::fromStdString(row.index_code)},
          {"name", QString::fromStdString(row.name)},
          {"parent", QString::fromStdString(parent)},
          {"pages", pages}};
}

void AddRowsBelow(TarnHost::CPlanStore& store, const std::string& parent, QJsonArray* rows) {
  view::GetPlanGroupsResponse groups;
  view::GetPlansInGroupResponse plans;
  store.GetPlanGroups({parent, 0}, groups);
  store.GetPlansInGroup({parent, 0}, plans);
  for (const view::PlanBasicInfo& plan : plans.plans) {
    rows->append(RowOf(plan, plan.group_index_code, plan.page_count));
  }
  for (const view::PlanGroup& group : groups.groups) {
    rows->append(RowOf(group, group.parent_index_code, 0));
    AddRowsBelow(store, group.index_code, rows);
  }
}

}  // namespace

CDeskWork::CDeskWork(QString name, unsigned seed, std::function<Store()> open, CDeskJournal* journal)
    : name_(std::move(name)), random_(seed), open_(std::move(open)), journal_(*journal) {}

void CDeskWork::Run() {
  while (!stopping_) {
    if (!store_) {
      OpenSession();
    } else {
      Work();
    }
    Pause();
  }
  while (!store_) {
    OpenSession();
  }
  journal_.Write({{"stopped", true}});
}

void CDeskWork::Stop() {
  const std::lock_guard<std::mutex> lock(mutex_);
  stopping_ = true;
  stop_.notify_all();
}

void CDeskWork::Pause() {
  std::unique_lock<std::mutex> lock(mutex_);
  stop_.wait_for(lock, std::chrono::milliseconds(Random(kPauseMs)), [this] { return stopping_.load(); });
}

void CDeskWork::OpenSession() {
  store_ = open_();
  if (store_) {
    has_added_ = false;
    uncertain_groups_.clear();
    journal_.Write({{"session", true}});
  }
}

QJsonArray CDeskWork::Tree(TarnHost::CPlanStore& store) {
  QJsonArray rows;
  AddRowsBelow(store, kRoot, &rows);
  return rows;
}

CDeskWork::Rows CDeskWork::Shown() const {
  Rows rows;
  for (const QJsonValue& row : Tree(*store_)) {
    const bool is_group = row["pages"].toInt() == 0;
    (is_group ? rows.groups : rows.plans).push_back(row["code"].toString().toStdString());
  }
  return rows;
}

// A few that all desks work at, or any.
std::string CDeskWork::SomePlan(const Rows& rows) {
  const size_t hot = std::min<size_t>(rows.plans.size(), kHotPlans);
  return Random(2) == 0 ? rows.plans[Random(int(hot))] : OneOf(rows.plans);
}

// The first answer that is certain tells which of the store's log entries are this session's.
void CDeskWork::Work() {
  const Rows rows = Shown();
  std::vector<std::string> places = rows.groups;
  places.insert(places.end(), 3, kRoot);
  const int choice = Random(100);
  if (!has_added_ || rows.plans.empty() || (choice < 14 && rows.plans.size() < kMostPlans)) {
    AddPlan(OneOf(places));
  } else if (rows.groups.size() < 3 || (choice < 18 && rows.groups.size() < kMostGroups)) {
    AddGroup(OneOf(places));
  } else if (choice < 24) {
    RenameGroup(OneOf(rows.groups));
  } else if (choice < 26) {
    DeleteGroup(OneOf(rows.groups));
  } else if (choice < 33) {
    DeletePlan(OneOf(rows.plans));
  } else if (choice < 43) {
    Rename(SomePlan(rows));
  } else if (choice < 53) {
    Move(SomePlan(rows), OneOf(places));
  } else if (choice < 63) {
    Read(SomePlan(rows));
  } else {
    Append(SomePlan(rows));
  }
}

template <class Response, class Call>
CDeskWork::Outcome CDeskWork::Ask(QJsonObject question, Response* response, Call call) {
  journal_.Begin(question);
  if (call(*response)) {
    return Outcome::kOk;
  }
  const bool is_certain = IsCertainlyNotSaved(*response);
  journal_.End({{"answer", is_certain ? "refused" : "unknown"}, {"why", QString::fromStdString(response->error_info)}});
  return is_certain ? Outcome::kRefused : Outcome::kUnknown;
}

void CDeskWork::AddPlan(const std::string& group) {
  const QString name = NewName();
  const auto request = TarnTest::NewPlan(name, group, {Page(1, 1, {}, name.toStdString())});
  view::AddPlanResponse response;
  QJsonObject question = Question("add_plan", group);
  question["name"] = name;
  const Outcome outcome = Ask(question, &response, [&](auto& answer) { return store_->AddPlan(request, answer); });
  if (outcome == Outcome::kOk) {
    journal_.End({{"answer", "ok"}, {"code", QString::fromStdString(response.index_code)}});
    has_added_ = true;
  } else if (outcome == Outcome::kUnknown) {
    store_.reset();
  }
}

void CDeskWork::AddGroup(const std::string& group) {
  const QString name = NewName();
  view::AddPlanGroupResponse response;
  QJsonObject question = Question("add_group", group);
  question["name"] = name;
  const Outcome outcome = Ask(question, &response, [&](auto& answer) {
    return store_->AddPlanGroup({name.toStdString(), group, 0, false}, answer);
  });
  if (outcome == Outcome::kOk) {
    journal_.End({{"answer", "ok"}, {"code", QString::fromStdString(response.index_code)}});
  } else if (outcome == Outcome::kUnknown) {
    store_.reset();
  }
}

void CDeskWork::RenameGroup(const std::string& group) {
  if (uncertain_groups_.count(group) != 0) {
    return;
  }
  const QString name = NewName();
  view::UpdatePlanGroupResponse response;
  QJsonObject question = Question("rename_group", group);
  question["name"] = name;
  const Outcome outcome = Ask(question, &response, [&](auto& answer) {
    return store_->UpdatePlanGroup({group, name.toStdString(), false}, answer);
  });
  if (outcome == Outcome::kOk) {
    journal_.End({{"answer", "ok"}});
  } else if (outcome == Outcome::kUnknown) {
    uncertain_groups_.insert(group);
  }
}

void CDeskWork::DeleteGroup(const std::string& group) {
  view::DeletePlanGroupResponse response;
  const auto call = [&](auto& answer) { return store_->DeletePlanGroup({group, {}, 0}, answer); };
  if (Ask(Question("delete_group", group), &response, call) == Outcome::kOk) {
    journal_.End({{"answer", "ok"}});
  }
}

void CDeskWork::DeletePlan(const std::string& plan) {
  view::DeletePlanResponse response;
  const auto call = [&](auto& answer) { return store_->DeletePlan({plan, {}, {}, {}, {}}, answer); };
  if (Ask(Question("delete_plan", plan), &response, call) == Outcome::kOk) {
    journal_.End({{"answer", "ok"}});
  }
}

std::optional<view::GetPlanDetailResponse> CDeskWork::Read(const std::string& plan) {
  view::GetPlanDetailResponse response;
  const auto call = [&](auto& answer) { return store_->GetPlanDetail({plan, 0, false}, answer); };
  if (Ask(Question("read", plan), &response, call) != Outcome::kOk) {
    return std::nullopt;
  }
  journal_.End({{"answer", "ok"},
                {"revision", qint64(response.revision)},
                {"name", QString::fromStdString(response.name)},
                {"parent", QString::fromStdString(response.group_index_code)},
                {"tokens", NamesOf(response.pages)}});
  return response;
}

void CDeskWork::Change(const char* what, const std::string& plan, const Edit& edit) {
  const auto detail = Read(plan);
  if (!detail || detail->pages.size() >= kMostPages) {
    return;
  }
  auto request = TarnTest::Unchanged(*detail);
  QJsonObject question = Question(what, plan);
  question["revision"] = qint64(request.revision);
  edit(&request, &question);
  view::UpdatePlanResponse response;
  const auto call = [&](auto& answer) { return store_->UpdatePlan(request, answer); };
  if (Ask(question, &response, call) == Outcome::kOk) {
    journal_.End({{"answer", "ok"}});
  }
}

void CDeskWork::Rename(const std::string& plan) {
  Change("rename", plan, [this](view::UpdatePlanRequest* request, QJsonObject* question) {
    const QString name = NewName();
    request->plan_name = name.toStdString();
    question->insert("name", name);
  });
}

void CDeskWork::Move(const std::string& plan, const std::string& group) {
  Change("move", plan, [&group](view::UpdatePlanRequest* request, QJsonObject* question) {
    request->parent_index_code = group;
    question->insert("parent", QString::fromStdString(group));
  });
}

void CDeskWork::Append(const std::string& plan) {
  Change("append", plan, [this](view::UpdatePlanRequest* request, QJsonObject* question) {
    const QString token = NewName();
    request->pages.push_back(Page(int(request->pages.size()) + 1, 1, {}, token.toStdString()));
    question->insert("token", token);
  });
}
