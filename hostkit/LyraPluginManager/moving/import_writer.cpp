#include "moving/import_writer.h"

#include "ResourceData/resource_type.h"
#include "accounts/administrators.h"
#include "plan_rules/families.h"
#include "store/page_codec.h"
#include "store/text_rules.h"
#include "store/user_roles.h"

namespace TarnHost::Moving {
namespace {

const char kOrigin[] = "import";
// A hole in the log of changes: who misses some reads everything again, at less cost than change by change.
constexpr int kHole = 1;

int32_t ParentOf(int32_t group, int32_t family) {
  if (group != 0) {
    return group;
  }
  return view_plugin_protocol::RootOf(family);
}

}  // namespace

void CImportWriter::Write(ImportPlan* decided, const SiteRecords& here) {
  const ImportPlan& plan = *decided;
  for (const UserRecord& user : here.users) {
    users_[user.name] = user.id;
  }
  for (const UserGroupRecord& group : here.user_groups) {
    user_groups_[group.name] = group.id;
  }
  Store::CAdministrators administrators(engine_);
  WriteUsers(plan);
  administrators.RequireKept();
  MakeRoles(&decided->report);
  WriteUserGroups(plan);
  WriteRegions(plan);
  WriteCameras(plan);
  WriteGroups(plan);
  for (const Saved<PlanRecord>& one : plan.plans) {
    WritePlan(one);
  }
  for (const Saved<UserRecord>& user : plan.users) {
    WriteChoices(user.record);
  }
  WriteNumbers(plan.last);
  TellDesks(plan);
}

void CImportWriter::WriteUsers(const ImportPlan& plan) {
  for (const Saved<UserRecord>& user : plan.users) {
    users_[user.record.name] = user.record.id;
    WriteUser(user);
  }
}

void CImportWriter::WriteUser(const Saved<UserRecord>& user) {
  if (user.is_new) {
    const bool is_free = !engine_.Value("SELECT 1 FROM app_user WHERE role_name = ?", {user.record.name}).isValid();
    engine_.Execute("INSERT INTO app_user (id, name, role_name) VALUES (?, ?, ?)",
                    {user.record.id, user.record.name, is_free ? user.record.name : QString()});
    KeepOut(user.record);
  }
  engine_.Execute("DELETE FROM user_right WHERE user_id = ?", {user.record.id});
  for (const int right : user.record.rights) {
    engine_.Execute("INSERT INTO user_right (user_id, code) VALUES (?, ?)", {user.record.id, right});
  }
}

// Where users have roles a user without one could not log in.
void CImportWriter::MakeRoles(CImportReport* report) {
  Store::CUserRoles* const roles = engine_.Roles();
  if (roles == nullptr || !roles->AreUsed()) {
    return;
  }
  for (const QString& role : roles->MakeMissing()) {
    report->remarks.append(QStringLiteral("Role \"%1\" of the server is new and has no password yet").arg(role));
  }
  for (const QString& role : roles->Missing()) {
    report->remarks.append(QStringLiteral("Role \"%1\" of the server is still to be made, by the database's"
                                          " administrator, before its user can log in")
                               .arg(role));
  }
}

// Without a row there he would get in with any password: none fits this one before an administrator gives him his.
void CImportWriter::KeepOut(const UserRecord& user) {
  engine_.Execute("INSERT INTO account (user_id, hash, wrong_tries, locked_at) VALUES (?, '*', 0, 0)", {user.id});
}

// Behind the plans and cameras that are chosen.
void CImportWriter::WriteChoices(const UserRecord& user) {
  engine_.Execute("DELETE FROM default_view WHERE user_id = ?", {user.id});
  const auto choose = [this, &user](int32_t code, int type) {
    if (code != 0) {
      engine_.Execute("INSERT INTO default_view (user_id, code, type) VALUES (?, ?, ?)", {user.id, code, type});
    }
  };
  choose(user.default_plan, ResourceData::RT_VIEW);
  choose(user.default_group, ResourceData::RT_VIEW_GROUP);
  for (const int32_t camera : user.favorite_cameras) {
    repository_.Cameras().SetFavorite(user.id, camera, true);
  }
}

void CImportWriter::WriteUserGroups(const ImportPlan& plan) {
  for (const Saved<UserGroupRecord>& group : plan.user_groups) {
    if (group.is_new) {
      engine_.Execute("INSERT INTO user_group (id, name) VALUES (?, ?)", {group.record.id, group.record.name});
      user_groups_[group.record.name] = group.record.id;
    }
    std::set<int32_t> members;
    for (const QString& name : group.record.members) {
      members.insert(UserId(name));
    }
    repository_.Audiences().SetMembers(group.record.id, members);
  }
}

void CImportWriter::WriteRegions(const ImportPlan& plan) {
  std::vector<Store::RegionRow> rows;
  for (const Saved<RegionRecord>& region : plan.regions) {
    rows.push_back({region.record.code, region.record.parent, region.record.name.toStdString()});
  }
  repository_.Cameras().Put(rows);
}

// How to sign in is not in the file: a password that is there stays.
void CImportWriter::WriteCameras(const ImportPlan& plan) {
  Store::CCameraRepository& cameras = repository_.Cameras();
  std::vector<Store::CameraRow> rows;
  std::vector<int32_t> codes;
  for (const Saved<CameraRecord>& camera : plan.cameras) {
    rows.push_back({camera.record.code, camera.record.region, camera.record.name.toStdString()});
    codes.push_back(camera.record.code);
  }
  cameras.Put(rows);
  std::map<int32_t, CameraAccess> access;
  for (CameraAccess& before : cameras.Access(codes).cameras) {
    access[Store::ParseCode(before.index_code)] = std::move(before);
  }
  WriteStreams(plan, &access);
  cameras.PutAccess(access);
  for (const Saved<CameraRecord>& camera : plan.cameras) {
    std::vector<ptz_plugin_protocol::PresetInfo> presets;
    for (const auto& [number, name] : camera.record.presets) {
      presets.push_back({number, name.toStdString()});
    }
    cameras.SetPresets(camera.record.code, presets);
  }
}

void CImportWriter::WriteStreams(const ImportPlan& plan, std::map<int32_t, CameraAccess>* access) {
  std::vector<std::pair<int32_t, CameraStream>> put, removed;
  for (const Saved<CameraRecord>& camera : plan.cameras) {
    CameraAccess& one = (*access)[camera.record.code];
    one.user = camera.record.user.toStdString();
    one.device_url = camera.record.device_url.value_or(QString()).toStdString();
    for (const CameraStream& stream : one.streams) {
      if (camera.record.streams.count(stream.type) == 0) {
        removed.push_back({camera.record.code, stream});
      }
    }
    for (const auto& [type, url] : camera.record.streams) {
      put.push_back({camera.record.code, {type, url.value_or(QString()).toStdString()}});
    }
  }
  repository_.Cameras().RemoveStreams(removed);
  repository_.Cameras().PutStreams(put);
}

void CImportWriter::WriteGroups(const ImportPlan& plan) {
  for (const Saved<GroupRecord>& group : plan.groups) {
    const GroupRecord& record = group.record;
    const int32_t parent = ParentOf(record.parent, record.family);
    if (group.is_new) {
      repository_.InsertGroup({record.code, parent, record.family, UserId(record.owner), record.name.toStdString()});
    } else {
      engine_.Execute("UPDATE plan_group SET parent_code = ?, name = ? WHERE code = ?",
                      {parent, record.name, record.code});
    }
    Store::Audience audience;
    for (const QString& name : record.user_groups) {
      audience.insert(user_groups_.at(name));
    }
    repository_.Audiences().SetAudience(record.code, audience);
  }
}

void CImportWriter::WritePlan(const Saved<PlanRecord>& plan) {
  const PlanRecord& record = plan.record;
  Store::StoredPlan stored;
  stored.row.code = record.code;
  stored.row.parent = ParentOf(record.group, record.family);
  stored.row.family = record.family;
  stored.row.owner = UserId(record.owner);
  stored.row.auto_run = record.auto_run;
  stored.name = record.name;
  stored.begin_time = record.begin_time;
  stored.end_time = record.end_time;
  stored.pages = *Store::PagesFromText(QString::fromUtf8(record.pages));
  stored.thumbnail = record.thumbnail;
  stored.creator = record.creator;
  stored.creation_time = record.creation_time;
  stored.changed_by = record.changed_by;
  stored.changed_at = record.changed_at;
  stored.revision = record.revision;
  stored.Complete();
  stored.row.cameras = dictionary_.NumbersOf(Store::CamerasOf(stored.pages));
  if (plan.is_new) {
    repository_.InsertPlan(stored);
  } else {
    repository_.UpdatePlan(stored);
  }
}

void CImportWriter::WriteNumbers(const LastNumbers& last) {
  const std::pair<const char*, int32_t> counters[] = {
      {"code", last.code}, {"region", last.region}, {"camera", last.camera}, {"user", last.user}};
  for (const auto& [counter, value] : counters) {
    engine_.Execute("UPDATE counter SET value = ? WHERE name = ? AND value < ?", {value, counter, value});
  }
}

void CImportWriter::TellDesks(const ImportPlan& plan) {
  using Store::ChangeEntry;
  if (plan.report.taken.isEmpty() && plan.report.changed.isEmpty()) {
    return;
  }
  engine_.Execute("UPDATE counter SET value = value + ? WHERE name = 'seq'", {kHole});
  repository_.LogChange({0, kOrigin, ChangeEntry::kAudiencesSaved, 0});
  repository_.LogChange({0, kOrigin, ChangeEntry::kCamerasSaved, 0});
}

int32_t CImportWriter::UserId(const QString& name) const {
  const auto user = users_.find(name);
  return user == users_.end() ? 0 : user->second;
}

}  // namespace TarnHost::Moving
