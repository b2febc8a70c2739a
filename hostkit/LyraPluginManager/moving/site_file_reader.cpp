#include "moving/site_file_reader.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <functional>
#include <iterator>

#include "moving/json_slices.h"
#include "plan_rules/families.h"
#include "plan_rules/plan_limits.h"
#include "plan_rules/window_content.h"
#include "store/camera_rules.h"
#include "store/page_codec.h"
#include "store/plan_soundness.h"
#include "store/store_error.h"
#include "store/text_rules.h"
#include "store/thumbnail_rules.h"

namespace TarnHost::Moving {
namespace {

using Store::CStoreError;
using Store::CStoreText;

constexpr int kMostStreams = 15, kHighestPreset = 65535;

[[noreturn]] void Refuse(const QString& text) {
  throw CStoreError(CStoreError::kRefused, text);
}

// A site's first content may have names that no one could type.
QString FaultOfAnyName(const QString& name) {
  const auto is_control = [](QChar c) { return c.category() == QChar::Other_Control; };
  if (name.trimmed().isEmpty()) {
    return QStringLiteral("it has no name");
  }
  if (name.size() > view_plugin_protocol::kLongestName) {
    return QStringLiteral("its name has more than %1 characters").arg(view_plugin_protocol::kLongestName);
  }
  if (std::any_of(name.begin(), name.end(), is_control)) {
    return QStringLiteral("its name has line breaks or other control characters");
  }
  return QString();
}

/// The members of an entry; the first that is not what it should be is its fault.
class CFields {
 public:
  explicit CFields(const QJsonObject& json) : json_(json) {}

  const QString& Fault() const { return fault_; }
  void Fail(const QString& fault) {
    if (fault_.isEmpty()) {
      fault_ = fault;
    }
  }
  void Require(const CStoreText& fault) { Fail(fault.Logged()); }

  bool Has(const char* key) const { return json_.contains(QLatin1String(key)); }
  QString Text(const char* key) {
    const QJsonValue value = json_[QLatin1String(key)];
    if (!value.isUndefined() && !value.isString()) {
      Fail(QStringLiteral("\"%1\" is no text").arg(QLatin1String(key)));
    }
    return value.toString();
  }
  int32_t Number(const char* key, int32_t otherwise = 0) {
    const QJsonValue value = json_[QLatin1String(key)];
    const bool is_whole = value.isDouble() && value.toInt(0) == value.toInt(1);
    if (!value.isUndefined() && (!is_whole || value.toInt() < 0)) {
      Fail(QStringLiteral("\"%1\" is no whole number").arg(QLatin1String(key)));
    }
    return value.toInt(otherwise);
  }
  int32_t Code(const char* key) {
    const int32_t code = Number(key);
    if (code <= 0) {
      Fail(QStringLiteral("\"%1\" is no code").arg(QLatin1String(key)));
    }
    return code;
  }
  bool Flag(const char* key) {
    const QJsonValue value = json_[QLatin1String(key)];
    if (!value.isUndefined() && !value.isBool()) {
      Fail(QStringLiteral("\"%1\" is neither true nor false").arg(QLatin1String(key)));
    }
    return value.toBool();
  }
  QJsonArray List(const char* key) {
    const QJsonValue value = json_[QLatin1String(key)];
    if (!value.isUndefined() && !value.isArray()) {
      Fail(QStringLiteral("\"%1\" is no list").arg(QLatin1String(key)));
    }
    return value.toArray();
  }
  QJsonObject Object(const char* key) {
    const QJsonValue value = json_[QLatin1String(key)];
    if (!value.isUndefined() && !value.isObject()) {
      Fail(QStringLiteral("\"%1\" is no object").arg(QLatin1String(key)));
    }
    return value.toObject();
  }
  std::set<QString> Texts(const char* key) {
    std::set<QString> texts;
    for (const QJsonValue& value : List(key)) {
      if (!value.isString()) {
        Fail(QStringLiteral("\"%1\" has something that is no text").arg(QLatin1String(key)));
      }
      texts.insert(value.toString());
    }
    return texts;
  }

 private:
  const QJsonObject json_;
  QString fault_;
};

int32_t TakeFamily(CFields* fields) {
  const QString name = fields->Text("family");
  for (const int32_t family :
       {view_plugin_protocol::PublicFamily, view_plugin_protocol::OwnFamily, view_plugin_protocol::ReceivedFamily}) {
    if (name == FamilyName(family)) {
      return family;
    }
  }
  fields->Fail(QStringLiteral("its family is none of public, own and received"));
  return view_plugin_protocol::PublicFamily;
}

QString TakeOwner(int32_t family, CFields* fields) {
  const QString owner = fields->Text("owner");
  if ((family == view_plugin_protocol::OwnFamily) == owner.isEmpty()) {
    fields->Fail(QStringLiteral("own groups and plans have an owner, and no others have"));
  }
  return owner;
}

void TakeRecord(CFields* fields, UserRecord* user) {
  fields->Fail(FaultOfAnyName(user->name));
  for (const QString& name : fields->Texts("rights")) {
    const auto* found = std::find_if(std::begin(kRightNames), std::end(kRightNames),
                                     [&name](const NamedRight& right) { return name == QLatin1String(right.name); });
    if (found == std::end(kRightNames)) {
      fields->Fail(QStringLiteral("there is no right \"%1\"").arg(name));
    } else {
      user->rights.insert(found->code);
    }
  }
  user->default_plan = fields->Number("default_plan");
  user->default_group = fields->Number("default_group");
  for (const QJsonValue& code : fields->List("favorite_cameras")) {
    user->favorite_cameras.insert(code.toInt());
  }
}

void TakeRecord(CFields* fields, UserGroupRecord* group) {
  fields->Fail(FaultOfAnyName(group->name));
  if (group->name.contains(QLatin1Char(',')) || group->name.contains(QLatin1Char('='))) {
    fields->Fail(QStringLiteral("its name has a comma or an equals sign"));
  }
  group->members = fields->Texts("members");
}

void TakeRecord(CFields* fields, RegionRecord* region) {
  region->code = fields->Code("code");
  region->parent = fields->Number("parent");
  fields->Require(Store::FaultOfRegionName(region->name));
}

// A password in an address stays out of the store, and of the reason, too.
std::optional<QString> TakeAddress(const QJsonObject& json, bool is_stream, CFields* fields) {
  if (json[QLatin1String("withheld")].toBool()) {
    return std::nullopt;
  }
  CameraAddress address;
  const QString url = json[QLatin1String("url")].toString();
  fields->Require(is_stream ? Store::ReadStreamAddress(url, &address) : Store::ReadDeviceAddress(url, &address));
  if (!address.user.empty()) {
    fields->Fail(QStringLiteral("an address has a user in it"));
  }
  return QString::fromStdString(address.url);
}

void TakePresets(CFields* fields, CameraRecord* camera) {
  for (const QJsonValue& value : fields->List("presets")) {
    CFields preset(value.toObject());
    const int32_t number = preset.Code("no");
    const QString name = preset.Text("name");
    preset.Require(Store::FaultOfCameraName(name));
    if (number > kHighestPreset || !camera->presets.emplace(number, name).second) {
      preset.Fail(QStringLiteral("there cannot be a preset %1, or not twice").arg(number));
    }
    fields->Fail(preset.Fault());
  }
}

void TakeRecord(CFields* fields, CameraRecord* camera) {
  camera->code = fields->Code("code");
  camera->region = fields->Number("region");
  fields->Require(Store::FaultOfCameraName(camera->name));
  for (const QJsonValue& value : fields->List("streams")) {
    CFields stream(value.toObject());
    const int32_t type = stream.Number("type");
    if (type > kMostStreams || !camera->streams.emplace(type, TakeAddress(value.toObject(), true, &stream)).second) {
      stream.Fail(QStringLiteral("there cannot be a stream %1, or not twice").arg(type));
    }
    fields->Fail(stream.Fault());
  }
  camera->user = fields->Text("user");
  fields->Require(Store::FaultOfUser(camera->user));
  camera->device_url = TakeAddress(fields->Object("device"), false, fields);
  TakePresets(fields, camera);
}

void TakeRecord(CFields* fields, GroupRecord* group) {
  group->code = fields->Code("code");
  group->parent = fields->Number("parent");
  group->family = TakeFamily(fields);
  group->owner = TakeOwner(group->family, fields);
  fields->Fail(FaultOfAnyName(group->name));
  group->user_groups = fields->Texts("user_groups");
  if (!group->user_groups.empty() && group->family != view_plugin_protocol::PublicFamily) {
    fields->Fail(QStringLiteral("only public groups are limited to user groups"));
  }
}

void TakePages(CFields* fields, PlanRecord* plan) {
  const auto pages =
      Store::PagesFromText(QString::fromUtf8(QJsonDocument(fields->List("pages")).toJson(QJsonDocument::Compact)));
  if (!pages) {
    fields->Fail(QStringLiteral("its pages cannot be read"));
    return;
  }
  fields->Require(Store::FaultOf(*pages));
  const int filled = view_plugin_protocol::FilledWindowsOf(*pages);
  if (filled > view_plugin_protocol::kMaxFilledWindows) {
    fields->Fail(QStringLiteral("it has %1 filled windows, and a plan has %2 at most")
                     .arg(filled)
                     .arg(view_plugin_protocol::kMaxFilledWindows));
  }
  plan->pages = Store::PagesToText(*pages).toUtf8();
}

void TakeTimes(CFields* fields, PlanRecord* plan) {
  plan->auto_run = fields->Flag("auto_run");
  plan->begin_time = fields->Text("begin_time");
  plan->end_time = fields->Text("end_time");
  for (const QString& time : {plan->begin_time, plan->end_time}) {
    if ((plan->auto_run || !time.isEmpty()) && Store::SecondOfDay(time) < 0) {
      fields->Fail(QStringLiteral("\"%1\" is not a time of day").arg(time));
    }
  }
}

void TakeRecord(CFields* fields, PlanRecord* plan) {
  plan->code = fields->Code("code");
  plan->group = fields->Number("group");
  plan->family = TakeFamily(fields);
  plan->owner = TakeOwner(plan->family, fields);
  fields->Fail(FaultOfAnyName(plan->name));
  TakeTimes(fields, plan);
  plan->creator = fields->Text("creator");
  plan->creation_time = fields->Text("creation_time");
  plan->changed_by = fields->Text("changed_by");
  plan->changed_at = fields->Text("changed_at");
  TakePages(fields, plan);
  const QByteArray picture = QByteArray::fromBase64(fields->Text("thumbnail").toLatin1());
  plan->thumbnail = Store::BoundedThumbnail(picture.toStdString());
}

/// Puts the records together from the slices of a text.
class CReader {
 public:
  std::optional<JsonFault> TakeHeader(const JsonSlice& slice) {
    if (slice.place < 0 && slice.key == QLatin1String("format")) {
      format_ = Value(slice).toString();
    } else if (slice.place < 0 && slice.key == QLatin1String("version")) {
      version_ = Value(slice).toInt();
    } else if (slice.place < 0 && slice.key == QLatin1String("site")) {
      file_.records.site = Value(slice).toString();
    }
    return std::nullopt;
  }

  void CheckHeader() const {
    if (format_ != QLatin1String(kFormat) || version_ < 1) {
      Refuse(QStringLiteral("The file is no export of a site."));
    }
    if (version_ > kFormatVersion) {
      Refuse(QStringLiteral("The file was made by a newer version (%1; this program knows %2).")
                 .arg(version_)
                 .arg(kFormatVersion));
    }
  }

  std::optional<JsonFault> TakeEntry(const JsonSlice& slice) {
    if (slice.place < 0) {
      return std::nullopt;
    }
    SiteRecords& records = file_.records;
    if (slice.key == QLatin1String("users")) {
      return Add("User", slice, &records.users);
    }
    if (slice.key == QLatin1String("user_groups")) {
      return Add("User group", slice, &records.user_groups);
    }
    if (slice.key == QLatin1String("regions")) {
      return Add("Region", slice, &records.regions);
    }
    if (slice.key == QLatin1String("cameras")) {
      return Add("Camera", slice, &records.cameras);
    }
    if (slice.key == QLatin1String("groups")) {
      return Add("Group", slice, &records.groups);
    }
    if (slice.key == QLatin1String("plans")) {
      return Add("Plan", slice, &records.plans);
    }
    return std::nullopt;
  }

  SiteFile File() { return std::move(file_); }

 private:
  static QJsonValue Value(const JsonSlice& slice) {
    return QJsonDocument::fromJson('[' + slice.bytes + ']').array().at(0);
  }

  template <class Record>
  std::optional<JsonFault> Add(const char* kind, const JsonSlice& slice, std::vector<Record>* records) {
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(slice.bytes, &error);
    if (error.error != QJsonParseError::NoError) {
      return JsonFault{error.errorString(), slice.at + error.offset};
    }
    Record record;
    CFields fields(json.object());
    record.name = fields.Text("name");
    TakeRecord(&fields, &record);
    if (fields.Fault().isEmpty()) {
      records->push_back(std::move(record));
    } else {
      file_.left_out.append(QStringLiteral("%1, entry %2 of \"%3\": %4")
                                .arg(Named(kind, record.name))
                                .arg(slice.place + 1)
                                .arg(slice.key, fields.Fault()));
    }
    return std::nullopt;
  }

  QString format_;
  int version_ = 0;
  SiteFile file_;
};

void ForEach(const char* text, qint64 size, const std::function<std::optional<JsonFault>(const JsonSlice&)>& take) {
  if (const auto fault = ForEachSlice(text, size, take)) {
    Refuse(QStringLiteral("The file cannot be read: line %1, byte %2: %3.")
               .arg(LineAt(text, fault->at))
               .arg(fault->at)
               .arg(fault->text));
  }
}

}  // namespace

SiteFile ReadSiteText(const char* text, qint64 size) {
  CReader reader;
  ForEach(text, size, [&reader](const JsonSlice& slice) { return reader.TakeHeader(slice); });
  reader.CheckHeader();
  ForEach(text, size, [&reader](const JsonSlice& slice) { return reader.TakeEntry(slice); });
  return reader.File();
}

SiteFile ReadSiteFile(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
    Refuse(QStringLiteral("%1 cannot be read: %2.").arg(path, file.errorString()));
  }
  if (file.size() > kLargestFile) {
    Refuse(QStringLiteral("%1 has %2 MB; a site's file has %3 MB at most.")
               .arg(path)
               .arg(file.size() / (1024 * 1024))
               .arg(kLargestFile / (1024 * 1024)));
  }
  if (file.size() == 0) {
    Refuse(QStringLiteral("%1 is empty.").arg(path));
  }
  const uchar* bytes = file.map(0, file.size());
  if (bytes == nullptr) {
    Refuse(QStringLiteral("%1 cannot be read: %2.").arg(path, file.errorString()));
  }
  return ReadSiteText(reinterpret_cast<const char*>(bytes), file.size());
}

}  // namespace TarnHost::Moving
