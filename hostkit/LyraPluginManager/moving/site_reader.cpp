#include "moving/site_reader.h"

#include "ResourceData/resource_type.h"
#include "plan_rules/rights.h"
#include "store/page_codec.h"
#include "store/plan_soundness.h"
#include "store/text_rules.h"

namespace TarnHost::Moving {
namespace {

// A root is 0 in a file: the family says which.
int32_t GroupOf(int32_t parent) {
  if (view_plugin_protocol::IsRootCode(parent)) {
    return 0;
  }
  return parent;
}

}  // namespace

SiteRecords CSiteReader::Read() {
  SiteRecords site;
  site.site = engine_.Value("SELECT value FROM store_info WHERE name = 'station_id'").toString();
  ReadUsers(&site);
  ReadUserGroups(&site);
  for (const auto& [code, region] : repository_.Cameras().Regions()) {
    site.regions.push_back({code, region.parent, Store::ToQt(region.name)});
  }
  ReadCameras(&site);
  ReadGroups(&site);
  return site;
}

void CSiteReader::ReadUsers(SiteRecords* site) {
  std::map<int32_t, UserRecord> users;
  engine_.ForEach("SELECT id, name FROM app_user", {}, [&users](const QSqlQuery& query) {
    UserRecord& user = users[query.value(0).toInt()];
    user.id = query.value(0).toInt();
    user.name = query.value(1).toString();
  });
  const auto each = [this, &users](const char* statement,
                                   const std::function<void(UserRecord*, const QSqlQuery&)>& take) {
    engine_.ForEach(QLatin1String(statement), {}, [&users, &take](const QSqlQuery& query) {
      const auto user = users.find(query.value(0).toInt());
      if (user != users.end()) {
        take(&user->second, query);
      }
    });
  };
  each("SELECT user_id, code FROM user_right",
       [](UserRecord* user, const QSqlQuery& query) { user->rights.insert(query.value(1).toInt()); });
  each("SELECT user_id, code, type FROM default_view", [](UserRecord* user, const QSqlQuery& query) {
    const bool is_group = query.value(2).toInt() == ResourceData::RT_VIEW_GROUP;
    (is_group ? user->default_group : user->default_plan) = query.value(1).toInt();
  });
  each("SELECT user_id, camera_id FROM favorite_camera",
       [](UserRecord* user, const QSqlQuery& query) { user->favorite_cameras.insert(query.value(1).toInt()); });
  for (auto& [id, user] : users) {
    users_[id] = user.name;
    site->users.push_back(std::move(user));
  }
}

void CSiteReader::ReadUserGroups(SiteRecords* site) {
  std::map<int32_t, UserGroupRecord> groups;
  engine_.ForEach("SELECT id, name FROM user_group", {}, [&groups](const QSqlQuery& query) {
    groups[query.value(0).toInt()] = {query.value(0).toInt(), query.value(1).toString(), {}};
  });
  engine_.ForEach("SELECT user_group_id, user_id FROM user_group_member", {}, [&](const QSqlQuery& query) {
    const auto group = groups.find(query.value(0).toInt());
    if (group != groups.end()) {
      group->second.members.insert(UserName(query.value(1).toInt()));
    }
  });
  for (const auto& [id, group] : groups) {
    site->user_groups.push_back(group);
  }
}

void CSiteReader::ReadCameras(SiteRecords* site) {
  std::map<int32_t, CameraRecord> cameras;
  for (const auto& [code, row] : repository_.Cameras().Cameras()) {
    CameraRecord& camera = cameras[code];
    camera.code = code;
    camera.region = row.region;
    camera.name = Store::ToQt(row.name);
    camera.device_url = QString();
  }
  const auto each = [this, &cameras](const char* statement,
                                     const std::function<void(CameraRecord*, const QSqlQuery&)>& take) {
    engine_.ForEach(QLatin1String(statement), {}, [&cameras, &take](const QSqlQuery& query) {
      const auto camera = cameras.find(query.value(0).toInt());
      if (camera != cameras.end()) {
        take(&camera->second, query);
      }
    });
  };
  each("SELECT camera_id, stream_type, url FROM camera_stream", [](CameraRecord* camera, const QSqlQuery& query) {
    camera->streams[query.value(1).toInt()] = query.value(2).toString();
  });
  each("SELECT camera_id, login, device_url FROM camera_access", [](CameraRecord* camera, const QSqlQuery& query) {
    camera->user = query.value(1).toString();
    camera->device_url = query.value(2).toString();
  });
  each("SELECT camera_id, preset_no, name FROM camera_preset", [](CameraRecord* camera, const QSqlQuery& query) {
    camera->presets[query.value(1).toInt()] = query.value(2).toString();
  });
  for (auto& [code, camera] : cameras) {
    site->cameras.push_back(std::move(camera));
  }
}

void CSiteReader::ReadGroups(SiteRecords* site) {
  std::map<int32_t, QString> names;
  for (const UserGroupRecord& group : site->user_groups) {
    names[group.id] = group.name;
  }
  const auto audiences = repository_.Audiences().All().limited;
  for (const Store::GroupRow& row : repository_.AllGroups()) {
    GroupRecord group{row.code, GroupOf(row.parent), row.family, UserName(row.owner), Store::ToQt(row.name), {}};
    const auto audience = audiences.find(row.code);
    if (audience != audiences.end()) {
      for (const int32_t user_group : audience->second) {
        const auto name = names.find(user_group);
        group.user_groups.insert(name == names.end() ? QStringLiteral("?") : name->second);
      }
    }
    site->groups.push_back(std::move(group));
  }
}

void CSiteReader::ForEachPlan(const std::function<void(PlanRecord plan, const QString& damage)>& take) {
  repository_.ForEachPlan([&](const Store::StoredPlan& stored, Store::Vouched) {
    PlanRecord plan;
    plan.code = stored.row.code;
    plan.group = GroupOf(stored.row.parent);
    plan.family = stored.row.family;
    plan.owner = UserName(stored.row.owner);
    plan.name = stored.name;
    plan.auto_run = stored.row.auto_run;
    plan.begin_time = stored.begin_time;
    plan.end_time = stored.end_time;
    plan.creator = stored.creator;
    plan.creation_time = stored.creation_time;
    plan.changed_by = stored.changed_by;
    plan.changed_at = stored.changed_at;
    plan.revision = stored.revision;
    if (stored.damage.IsEmpty()) {
      plan.pages = Store::PagesToText(stored.pages).toUtf8();
      plan.thumbnail = stored.thumbnail;
    }
    take(std::move(plan), stored.damage.Logged());
  });
}

QString CSiteReader::UserName(int32_t id) const {
  const auto user = users_.find(id);
  return user == users_.end() ? QString() : user->second;
}

}  // namespace TarnHost::Moving
