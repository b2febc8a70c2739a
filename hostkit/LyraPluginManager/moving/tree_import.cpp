#include "moving/tree_import.h"

#include <algorithm>
#include <utility>

#include "plan_rules/families.h"
#include "plan_rules/plan_limits.h"
#include "plan_rules/window_content.h"
#include "store/page_codec.h"
#include "store/plan_records.h"

namespace TarnHost::Moving {
namespace {

using view_plugin_protocol::kDeepestLevel;
using view_plugin_protocol::OwnFamily;

QStringList DifferenceOf(const PlanRecord& here, const PlanRecord& plan) {
  QStringList what;
  AddIf(here.name != plan.name, "name", &what);
  AddIf(here.group != plan.group, "place", &what);
  AddIf(std::tie(here.auto_run, here.begin_time, here.end_time) !=
            std::tie(plan.auto_run, plan.begin_time, plan.end_time),
        "timed run", &what);
  AddIf(here.digest != plan.digest, "pages or picture", &what);
  return what;
}

}  // namespace

CTreeImport::CTreeImport(const StandingSite& here, bool is_same_site, ImportPlan* plan)
    : is_same_site_(is_same_site), plan_(plan), codes_(here.last.code, is_same_site) {
  codes_.Note(here.records.groups);
  codes_.Note(here.records.plans);
  for (const int32_t code : here.kept_codes) {
    codes_.Note(code);
  }
  for (const GroupRecord& group : here.records.groups) {
    groups_[group.code] = &group;
    groups_by_place_.emplace(Place(group.parent, FamilyOf(group), group.name), &group);
    families_[group.code] = FamilyOf(group);
    group_parents_[group.code] = group.parent;
  }
  for (const PlanRecord& one : here.records.plans) {
    plans_[one.code] = &one;
    plans_by_place_[Place(one.group, FamilyOf(one), one.name)].push_back(&one);
  }
}

void CTreeImport::DropDoubles(SiteRecords* file) {
  std::set<int32_t> seen;
  Moving::DropDoubles("Group", &seen, &file->groups, &plan_->report);
  Moving::DropDoubles("Plan", &seen, &file->plans, &plan_->report);
}

template <class Record>
QString CTreeImport::WhyNotIn(int32_t file_group, const Record& record, const CUserImport& users) const {
  const int32_t* group = Find(group_codes_, file_group);
  if (!group) {
    return QLatin1String(kNoParent);
  }
  if (record.family == OwnFamily && !users.HasUser(record.owner)) {
    return QStringLiteral("its owner \"%1\" is not there").arg(record.owner);
  }
  const auto above = families_.find(*group);
  if (above != families_.end() && above->second != FamilyOf(record)) {
    return QStringLiteral("it is of another family or owner than what it is in");
  }
  return QString();
}

QString CTreeImport::WhyNot(const GroupRecord& group, const CUserImport& users) const {
  const QString why = WhyNotIn(group.parent, group, users);
  if (!why.isEmpty()) {
    return why;
  }
  if (LevelOf(group_parents_, *Find(group_codes_, group.parent)) + 2 > kDeepestLevel) {
    return QStringLiteral("groups are nested %1 levels deep at most").arg(kDeepestLevel);
  }
  for (const QString& name : group.user_groups) {
    if (!users.HasUserGroup(name)) {
      return QStringLiteral("it is limited to user group \"%1\", which is not there").arg(name);
    }
  }
  return QString();
}

void CTreeImport::TakeGroups(std::vector<GroupRecord> groups, const CUserImport& users) {
  for (GroupRecord& group : TopDown("Group", std::move(groups), &plan_->report)) {
    const QString why = WhyNot(group, users);
    if (why.isEmpty()) {
      group.parent = *Find(group_codes_, group.parent);
      const GroupRecord* known = Known(group);
      TakeGroup(known, std::move(group));
    } else {
      plan_->report.LeaveOut("Group", group, why);
    }
  }
  plan_->last.code = codes_.Last();
}

const GroupRecord* CTreeImport::Known(const GroupRecord& group) const {
  const auto same = groups_.find(group.code);
  if (is_same_site_ && same != groups_.end() && FamilyOf(*same->second) == FamilyOf(group) &&
      (same->second->name == group.name || same->second->parent == group.parent)) {
    return same->second;
  }
  const auto namesake = groups_by_place_.find(Place(group.parent, FamilyOf(group), group.name));
  if (namesake == groups_by_place_.end()) {
    return nullptr;
  }
  return namesake->second;
}

void CTreeImport::TakeGroup(const GroupRecord* known, GroupRecord group) {
  const int32_t file_code = group.code;
  group.code = codes_.Of(known, file_code);
  group_codes_[file_code] = group.code;
  if (!known) {
    families_[group.code] = FamilyOf(group);
    group_parents_[group.code] = group.parent;
    plan_->report.NoteTaken("Group", group.name, group.code, file_code);
    plan_->groups.push_back({std::move(group), true});
    return;
  }
  QStringList what;
  if (is_same_site_) {
    AddIf(known->name != group.name, "name", &what);
    AddIf(known->parent != group.parent, "place", &what);
    AddIf(known->user_groups != group.user_groups, "who sees it", &what);
  }
  if (plan_->report.NoteChanged(Named("Group", group.name, group.code), what)) {
    group_parents_[group.code] = group.parent;
    plan_->groups.push_back({std::move(group), false});
  }
}

void CTreeImport::TakePlans(std::vector<PlanRecord> plans, const CUserImport& users, const CamerasOfSite& cameras) {
  for (PlanRecord& plan : plans) {
    const QString why = WhyNotIn(plan.group, plan, users);
    if (!why.isEmpty()) {
      plan_->report.LeaveOut("Plan", plan, why);
      continue;
    }
    plan.group = *Find(group_codes_, plan.group);
    MapCameras(cameras, &plan);
    plan.digest = DigestOf(plan);
    TakePlan(std::move(plan));
  }
  plan_->last.code = codes_.Last();
}

// Of one that was renamed and moved since, who made it and when tells that it is the same.
void CTreeImport::TakePlan(PlanRecord plan) {
  const auto same = plans_.find(plan.code);
  if (is_same_site_ && same != plans_.end()) {
    const PlanRecord& here = *same->second;
    const bool is_made_alike = here.creation_time == plan.creation_time && here.creator == plan.creator;
    if (FamilyOf(here) == FamilyOf(plan) && (here.name == plan.name || here.group == plan.group || is_made_alike)) {
      ChangePlan(here, std::move(plan));
      return;
    }
  }
  const auto namesakes = plans_by_place_.find(Place(plan.group, FamilyOf(plan), plan.name));
  if (namesakes == plans_by_place_.end()) {
    AddPlan(std::move(plan));
  } else {
    TakeNamesake(namesakes->second, plan);
  }
}

void CTreeImport::ChangePlan(const PlanRecord& known, PlanRecord plan) {
  plan_codes_[plan.code] = known.code;
  plan.revision = known.revision + 1;
  if (plan_->report.NoteChanged(Named("Plan", plan.name, plan.code), DifferenceOf(known, plan))) {
    plan_->plans.push_back({std::move(plan), false});
  }
}

void CTreeImport::TakeNamesake(const Namesakes& namesakes, const PlanRecord& plan) {
  const auto found = std::find_if(namesakes.begin(), namesakes.end(),
                                  [&plan](const PlanRecord* other) { return DifferenceOf(*other, plan).isEmpty(); });
  if (found == namesakes.end()) {
    plan_->report.LeaveOut("Plan", plan, QLatin1String(kNamesake));
    return;
  }
  plan_codes_[plan.code] = (*found)->code;
  ++plan_->report.same;
}

void CTreeImport::AddPlan(PlanRecord plan) {
  const int32_t file_code = plan.code;
  plan.code = codes_.New(file_code);
  plan.revision = 1;
  plan_codes_[file_code] = plan.code;
  plan_->report.NoteTaken("Plan", plan.name, plan.code, file_code);
  plan_->plans.push_back({std::move(plan), true});
}

void CTreeImport::MapCameras(const CamerasOfSite& cameras, PlanRecord* plan) const {
  auto pages = Store::PagesFromText(QString::fromUtf8(plan->pages));
  bool is_changed = false;
  for (auto& page : *pages) {
    for (auto& window : page.windows) {
      if (view_plugin_protocol::IsCamera(window)) {
        const std::string before = std::exchange(window.resource_code, CodeOf(window.resource_code, cameras));
        is_changed = is_changed || before != window.resource_code;
      }
    }
  }
  if (is_changed) {
    plan->pages = Store::PagesToText(*pages).toUtf8();
  }
}

// The code of another site's camera that did not come along would name one of this site: it becomes one that names
// none.
std::string CTreeImport::CodeOf(const std::string& camera, const CamerasOfSite& cameras) const {
  const int32_t file_code = Store::ParseCode(camera);
  const int32_t* code = Find(cameras.codes, file_code);
  if (code && file_code != 0) {
    return std::to_string(*code);
  }
  if (is_same_site_ || file_code == 0) {
    return camera;
  }
  return camera + "@" + cameras.site.toStdString();
}

}  // namespace TarnHost::Moving
