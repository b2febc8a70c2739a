#include "store/site_importer.h"

#include <QLocale>
#include <QUuid>
#include <algorithm>

#include "ResourceData/resource_type.h"
#include "store/feature_switches.h"
#include "store/page_codec.h"
#include "store/text_rules.h"
#include "store/thumbnail_rules.h"

namespace TarnHost::Store {
namespace {

constexpr int32_t kFirstCamera = 1001;
constexpr int32_t kFirstUser = 1;

template <class List>
const typename List::value_type& At(const List& list, int place) {
  if (place < 0 || static_cast<size_t>(place) >= list.size()) {
    throw CStoreError(CStoreError::kRefused,
                      QStringLiteral("The site's content refers to something that is not in it."));
  }
  return list[static_cast<size_t>(place)];
}

int32_t OwnerId(const PlanSite& site, int32_t family, int owner) {
  if (!view_plugin_protocol::IsFamily(family)) {
    throw CStoreError(CStoreError::kRefused, QStringLiteral("There is no family %1.").arg(family));
  }
  if (family != OwnFamily) {
    return 0;
  }
  At(site.users, owner);
  return kFirstUser + owner;
}

}  // namespace

CSiteImporter::CSiteImporter(CSqlEngine& engine, const PlanSite& site, const QDateTime& now)
    : engine_(engine),
      repository_(engine),
      cameras_(engine),
      site_(site),
      now_(QLocale::c().toString(now, QStringLiteral("yyyy-MM-dd HH:mm:ss"))) {}

void CSiteImporter::Run() {
  ImportInfo();
  ImportUsers();
  ImportCameras();
  ImportSwitches();
  const auto group_count = static_cast<int32_t>(site_.groups.size());
  const int32_t first_group = repository_.NewCodes(group_count);
  const int32_t first_plan = repository_.NewCodes(static_cast<int32_t>(site_.plans.size()));
  ImportGroups(first_group);
  ImportPlans(first_plan);
  ImportDefaultViews(first_plan);
}

void CSiteImporter::ImportInfo() {
  const auto add = [this](const char* name, const QString& value) {
    engine_.Execute("INSERT INTO store_info (name, value) VALUES (?, ?)", {name, value});
  };
  add("station_id", QUuid::createUuid().toString(QUuid::WithoutBraces));
  add("root_name", ToQt(site_.root_name));
  if (site_.is_pretended) {
    add("pretended", QStringLiteral("1"));
  }
}

void CSiteImporter::ImportUsers() {
  int32_t id = kFirstUser;
  for (const PlanSite::User& user : site_.users) {
    engine_.Execute("INSERT INTO app_user (id, name, role_name) VALUES (?, ?, ?)",
                    {id, ToQt(user.name), ToQt(user.name)});
    for (const int right : user.rights) {
      engine_.Execute("INSERT INTO user_right (user_id, code) VALUES (?, ?)", {id, right});
    }
    ++id;
  }
  for (const PlanSite::UserGroup& group : site_.user_groups) {
    std::set<int32_t> members;
    for (const int user : group.users) {
      At(site_.users, user);
      members.insert(kFirstUser + user);
    }
    repository_.Audiences().SetMembers(repository_.Audiences().UserGroupToFill(ToQt(group.name)), members);
  }
}

void CSiteImporter::ImportAudience(size_t place) {
  if (site_.groups[place].audience.empty()) {
    return;
  }
  Audience audience;
  for (const int user_group : site_.groups[place].audience) {
    audience.insert(*repository_.Audiences().UserGroup(ToQt(At(site_.user_groups, user_group).name)));
  }
  repository_.Audiences().SetAudience(groups_[place].code, audience);
}

void CSiteImporter::ImportCameras() {
  int32_t region_id = 1;
  for (const PlanSite::Region& region : site_.regions) {
    engine_.Execute("INSERT INTO region (id, parent_id, name) VALUES (?, ?, ?)",
                    {region_id++, region.parent + 1, ToQt(region.name)});
  }
  int32_t camera_id = kFirstCamera;
  for (const PlanSite::Camera& camera : site_.cameras) {
    ImportCamera(camera_id++, camera);
  }
  const auto count = [this](const char* counter, int32_t last) {
    engine_.Execute("UPDATE counter SET value = ? WHERE name = ?", {last, counter});
  };
  count("region", region_id - 1);
  count("camera", camera_id - 1);
}

void CSiteImporter::ImportCamera(int32_t id, const PlanSite::Camera& camera) {
  engine_.Execute("INSERT INTO camera (id, region_id, name, online) VALUES (?, ?, ?, ?)",
                  {id, camera.region + 1, ToQt(camera.name), int(camera.online)});
  int preset_no = 1;
  for (const std::string& preset : camera.presets) {
    engine_.Execute("INSERT INTO camera_preset (camera_id, preset_no, name) VALUES (?, ?, ?)",
                    {id, preset_no++, ToQt(preset)});
  }
  for (const int32_t stream_type : camera.stream_types) {
    engine_.Execute("INSERT INTO camera_stream (camera_id, stream_type) VALUES (?, ?)", {id, stream_type});
  }
}

void CSiteImporter::ImportSwitches() {
  // All of them, so that a later program's other defaults do not change a store that stands.
  const view_plugin_protocol::GetPlanConfigResponse defaults;
  for (const QString& name : FeatureSwitchNames()) {
    engine_.Execute("INSERT INTO feature_switch (name, value) VALUES (?, ?)", {name, FeatureSwitch(defaults, name)});
  }
  for (const auto& [name, value] : site_.switches) {
    if (!FeatureSwitchNames().contains(ToQt(name))) {
      throw CStoreError(CStoreError::kRefused, QStringLiteral("There is no switch \"%1\".").arg(ToQt(name)));
    }
    engine_.Execute("UPDATE feature_switch SET value = ? WHERE name = ?", {value, ToQt(name)});
  }
}

void CSiteImporter::ImportGroups(int32_t first_code) {
  for (size_t place = 0; place < site_.groups.size(); ++place) {
    groups_.push_back(GroupAt(place, first_code));
    repository_.InsertGroup(groups_.back());
    ImportAudience(place);
  }
}

// Family and owner of all that hangs below a group are the group's.
GroupRow CSiteImporter::GroupAt(size_t place, int32_t first_code) const {
  const PlanSite::Group& group = site_.groups[place];
  const int32_t code = first_code + static_cast<int32_t>(place);
  if (group.parent < 0) {
    return {code, view_plugin_protocol::RootOf(group.family), group.family, OwnerId(site_, group.family, group.owner),
            group.name};
  }
  const GroupRow& parent = At(groups_, group.parent);  // those before it: a parent comes first
  return {code, parent.code, parent.family, parent.owner, group.name};
}

void CSiteImporter::ImportPlans(int32_t first_code) {
  int32_t code = first_code;
  for (const PlanSite::Plan& plan : site_.plans) {
    StoredPlan stored = Content(plan);
    stored.row.code = code++;
    stored.row.cameras = cameras_.NumbersOf(CamerasOf(stored.pages));
    repository_.InsertPlan(stored);
  }
}

void CSiteImporter::ImportDefaultViews(int32_t first_plan) {
  for (size_t place = 0; place < site_.users.size(); ++place) {
    const int plan = site_.users[place].default_view;
    if (plan >= 0) {
      At(site_.plans, plan);
      engine_.Execute("INSERT INTO default_view (user_id, code, type) VALUES (?, ?, ?)",
                      {kFirstUser + static_cast<int32_t>(place), first_plan + plan, int(ResourceData::RT_VIEW)});
    }
  }
}

StoredPlan CSiteImporter::Content(const PlanSite::Plan& plan) const {
  StoredPlan stored;
  if (plan.group < 0) {
    stored.row.parent = view_plugin_protocol::RootOf(plan.family);
    stored.row.family = plan.family;
    stored.row.owner = OwnerId(site_, plan.family, plan.owner);
  } else {
    const GroupRow& group = At(groups_, plan.group);
    stored.row.parent = group.code;
    stored.row.family = group.family;
    stored.row.owner = group.owner;
  }
  stored.row.auto_run = plan.auto_run;
  stored.name = ToQt(plan.name);
  stored.begin_time = ToQt(plan.begin_time);
  stored.end_time = ToQt(plan.end_time);
  stored.pages = Pages(plan);
  stored.thumbnail = BoundedThumbnail(plan.thumbnail);
  stored.creator = stored.changed_by = CreatorOf(plan);
  stored.creation_time = stored.changed_at = now_;
  stored.Complete();
  return stored;
}

QString CSiteImporter::CreatorOf(const PlanSite::Plan& plan) const {
  if (!plan.creator.empty()) {
    return ToQt(plan.creator);
  }
  if (site_.users.empty()) {
    return QString();
  }
  return ToQt(At(site_.users, std::max(plan.owner, 0)).name);
}

std::list<view_plugin_protocol::PlanPage> CSiteImporter::Pages(const PlanSite::Plan& plan) const {
  std::list<view_plugin_protocol::PlanPage> pages(plan.pages.begin(), plan.pages.end());
  for (auto& page : pages) {
    for (auto& window : page.windows) {
      ResolveCamera(&window);
    }
  }
  return pages;
}

void CSiteImporter::ResolveCamera(view_plugin_protocol::PlanWindow* window) const {
  if (window->resource_code.empty() || window->resource_code.front() != '#') {
    return;
  }
  const int place = ToQt(window->resource_code.substr(1)).toInt();
  const PlanSite::Camera& camera = At(site_.cameras, place);
  window->resource_code = std::to_string(kFirstCamera + place);
  if (window->resource_name.empty()) {
    window->resource_name = camera.name;
  }
}

}  // namespace TarnHost::Store
