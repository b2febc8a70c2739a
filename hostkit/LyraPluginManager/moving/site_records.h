#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace TarnHost::Moving {

// What a site's file says, and what a store has of the same. Codes count within the site that they come from; 0 is
// none.

struct UserRecord {
  int32_t id = 0;  // in the store; a file names users by their names
  QString name;
  std::set<int> rights;
  int32_t default_plan = 0, default_group = 0;  // codes, one of them at most
  std::set<int32_t> favorite_cameras;           // codes
};

struct UserGroupRecord {
  int32_t id = 0;  // likewise
  QString name;
  std::set<QString> members;
};

struct RegionRecord {
  int32_t code = 0, parent = 0;
  QString name;
};

struct CameraRecord {
  int32_t code = 0, region = 0;
  QString name;
  std::map<int32_t, std::optional<QString>> streams;  // address by type; none where the file withholds it
  QString user;
  std::optional<QString> device_url;
  std::map<int32_t, QString> presets;
};

struct GroupRecord {
  int32_t code = 0, parent = 0, family = 0;
  QString owner;  // of an own group
  QString name;
  std::set<QString> user_groups;  // that alone see it; none: all users
};

struct PlanRecord {
  int32_t code = 0, group = 0, family = 0;
  QString owner, name;
  bool auto_run = false;
  QString begin_time, end_time;
  QString creator, creation_time, changed_by, changed_at;
  QByteArray pages;  // as the store has them
  QByteArray thumbnail;
  QByteArray digest;     // in the place of pages and picture, of one in a store
  int64_t revision = 0;  // in the store
};

struct SiteRecords {
  QString site;  // identity of the site
  std::vector<UserRecord> users;
  std::vector<UserGroupRecord> user_groups;
  std::vector<RegionRecord> regions;
  std::vector<CameraRecord> cameras;
  std::vector<GroupRecord> groups;
  std::vector<PlanRecord> plans;
};

/// How one of them is named in messages: its kind, name and code, on one line whatever the name has in it.
QString Named(const char* kind, const QString& name, int32_t code = 0);

/// As a file has it; "unknown" for what is no family.
QString FamilyName(int32_t family);
/// Of pages and picture: what two plans of the same digest play is the same.
QByteArray DigestOf(const PlanRecord& plan);

struct NamedRight {
  const char* name;
  int code;
};
inline constexpr NamedRight kRightNames[] = {
    {"add_plans", 5}, {"edit_plans", 6}, {"delete_plans", 7}, {"configure_site", 8}};

inline const char kFormat[] = "tarn-site";
inline constexpr int kFormatVersion = 1;

}  // namespace TarnHost::Moving
