#include "moving/site_file_writer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <iterator>

#include "TarnHost/camera_address.h"

namespace TarnHost::Moving {
namespace {

QByteArray TextOf(const QJsonObject& json) {
  return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

QByteArray Quoted(const QString& text) {
  const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
  return list.mid(1, list.size() - 2);
}

void Add(const char* key, int32_t number, QJsonObject* json) {
  if (number != 0) {
    json->insert(QLatin1String(key), number);
  }
}

void Add(const char* key, const QString& text, QJsonObject* json) {
  if (!text.isEmpty()) {
    json->insert(QLatin1String(key), text);
  }
}

template <class Texts>
QJsonArray ListOf(const Texts& texts) {
  QJsonArray list;
  std::copy(texts.begin(), texts.end(), std::back_inserter(list));
  return list;
}

}  // namespace

void CSiteFileWriter::Begin(const SiteRecords& site, const QString& root_name) {
  device_.write("{\n\"format\": " + Quoted(QLatin1String(kFormat)) +
                ",\n\"version\": " + QByteArray::number(kFormatVersion) + ",\n\"site\": " + Quoted(site.site) +
                ",\n\"name\": " + Quoted(root_name));
  WriteList("users", site.users);
  WriteList("user_groups", site.user_groups);
  WriteList("regions", site.regions);
  WriteList("cameras", site.cameras);
  WriteList("groups", site.groups);
  device_.write(",\n\"plans\": [");
}

template <class Record>
void CSiteFileWriter::WriteList(const char* key, const std::vector<Record>& records) {
  device_.write(QByteArray(",\n\"") + key + "\": [");
  const char* between = "\n";
  for (const Record& record : records) {
    device_.write(between + TextOf(Json(record)));
    between = ",\n";
  }
  device_.write("]");
}

// The pages are JSON already.
void CSiteFileWriter::Write(const PlanRecord& plan) {
  QJsonObject json{{"code", plan.code}, {"family", FamilyName(plan.family)}, {"name", plan.name}};
  Add("group", plan.group, &json);
  Add("owner", plan.owner, &json);
  if (plan.auto_run) {
    json.insert("auto_run", true);
  }
  Add("begin_time", plan.begin_time, &json);
  Add("end_time", plan.end_time, &json);
  Add("creator", plan.creator, &json);
  Add("creation_time", plan.creation_time, &json);
  Add("changed_by", plan.changed_by, &json);
  Add("changed_at", plan.changed_at, &json);
  Add("thumbnail", QString::fromLatin1(plan.thumbnail.toBase64()), &json);
  device_.write(is_first_plan_ ? "\n" : ",\n");
  device_.write(TextOf(json).chopped(1) + ",\"pages\":" + plan.pages + "}");
  is_first_plan_ = false;
}

void CSiteFileWriter::End() {
  device_.write("]\n}\n");
}

QJsonObject CSiteFileWriter::Json(const UserRecord& user) const {
  QStringList rights;
  for (const NamedRight& right : kRightNames) {
    if (user.rights.count(right.code) != 0) {
      rights.append(QLatin1String(right.name));
    }
  }
  QJsonObject json{{"name", user.name}, {"rights", ListOf(rights)}};
  Add("default_plan", user.default_plan, &json);
  Add("default_group", user.default_group, &json);
  if (!user.favorite_cameras.empty()) {
    json.insert("favorite_cameras", ListOf(user.favorite_cameras));
  }
  return json;
}

QJsonObject CSiteFileWriter::Json(const UserGroupRecord& group) const {
  return {{"name", group.name}, {"members", ListOf(group.members)}};
}

QJsonObject CSiteFileWriter::Json(const RegionRecord& region) const {
  QJsonObject json{{"code", region.code}, {"name", region.name}};
  Add("parent", region.parent, &json);
  return json;
}

QJsonObject CSiteFileWriter::Address(const QString& url, const CameraRecord& camera) {
  if (!MayHoldPassword(url.toStdString())) {
    return {{"url", url}};
  }
  const QString line = Named("Camera", camera.name, camera.code);
  if (!withheld_.contains(line)) {
    withheld_.append(line);
  }
  return {{"withheld", true}};
}

QJsonObject CSiteFileWriter::Json(const CameraRecord& camera) {
  QJsonObject json{{"code", camera.code}, {"name", camera.name}};
  Add("region", camera.region, &json);
  Add("user", camera.user, &json);
  QJsonArray streams, presets;
  for (const auto& [type, url] : camera.streams) {
    QJsonObject stream = Address(url.value_or(QString()), camera);
    stream.insert("type", type);
    streams.append(stream);
  }
  for (const auto& [number, name] : camera.presets) {
    presets.append(QJsonObject{{"no", number}, {"name", name}});
  }
  json.insert("streams", streams);
  json.insert("presets", presets);
  if (!camera.device_url.value_or(QString()).isEmpty()) {
    json.insert("device", Address(*camera.device_url, camera));
  }
  return json;
}

QJsonObject CSiteFileWriter::Json(const GroupRecord& group) const {
  QJsonObject json{{"code", group.code}, {"family", FamilyName(group.family)}, {"name", group.name}};
  Add("parent", group.parent, &json);
  Add("owner", group.owner, &json);
  if (!group.user_groups.empty()) {
    json.insert("user_groups", ListOf(group.user_groups));
  }
  return json;
}

}  // namespace TarnHost::Moving
