#include "site/camera_csv.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "TarnHost/camera_address.h"
#include "plan_rules/stream_kinds.h"

namespace TarnClient {

namespace {

using TarnHost::CameraChanges;
using view_plugin_protocol::kMainStream;
using view_plugin_protocol::kSubStream;

enum Column { kCode, kName, kRegion, kMain, kSub, kUser, kPassword, kDevice, kColumnCount };
const char* const kColumns[] = {"code", "name", "region", "main", "sub", "user", "password", "device"};
// Stands for an address in which a password may stand, in a table that is to have none: it stays as it is.
constexpr char kWithheld[] = "*";

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

/// Works out what becomes of each row.
class CPlanner {
 public:
  explicit CPlanner(const SiteTable& site) : site_(site) {
    for (const auto& region : site.regions) {
      const QString path = site.PathOf(region.index_code);
      regions_.insert(path, regions_.value(path, region.index_code));
    }
    for (const auto& camera : site.cameras) {
      const QString place = PlaceOf(site.PathOf(camera.region_index_code), Text(camera.name));
      by_place_[place].push_back(camera.index_code);
      by_code_[Text(camera.index_code)] = &camera;
    }
  }

  /// Answers the required columns that are missing.
  QStringList TakeHeader(const QStringList& header) {
    QStringList missing;
    for (int column = 0; column < kColumnCount; ++column) {
      places_[column] = -1;
      for (int at = 0; at < header.size(); ++at) {
        if (header[at].trimmed().compare(QLatin1String(kColumns[column]), Qt::CaseInsensitive) == 0) {
          places_[column] = at;
          break;
        }
      }
    }
    for (const Column column : {kName, kMain}) {
      if (!Has(column)) {
        missing.append(QLatin1String(kColumns[column]));
      }
    }
    return missing;
  }

  void TakeRow(const CCsvText::Row& row) {
    row_ = &row;
    CameraChanges::Camera change;
    QString why = FaultOf(&change);
    if (why.isEmpty()) {
      why = Find(&change);
    }
    if (!why.isEmpty()) {
      plan_.left_out.append(CCameraCsv::tr("Line %1: %2").arg(row.line).arg(why));
      return;
    }
    Add(std::move(change));
  }

  CameraImport Plan() { return std::move(plan_); }

 private:
  static QString PlaceOf(const QString& path, const QString& name) { return path + QLatin1Char('\n') + name; }

  bool Has(Column column) const { return places_[column] >= 0; }
  QString Cell(Column column) const { return row_->cells.value(places_[column]).trimmed(); }
  // As it was written: a password may begin or end with a blank.
  QString Password() const { return Has(kPassword) ? row_->cells.value(places_[kPassword]) : QString(); }

  QString FaultOf(CameraChanges::Camera* change) {
    const QString name = Cell(kName);
    QString why = TarnHost::WhyNoCameraName(name);
    change->name = name.toStdString();
    TarnHost::CameraSignIn in_addresses;
    for (const Column column : {kMain, kSub, kDevice}) {
      if (why.isEmpty() && Has(column) && !IsWithheld(column)) {
        why = TakeAddress(column, change, &in_addresses);
      }
    }
    if (why.isEmpty()) {
      why = TakeSignIn(in_addresses, change);
    }
    return why;
  }

  bool IsWithheld(Column column) const { return Cell(column) == QLatin1String(kWithheld); }

  QString TakeAddress(Column column, CameraChanges::Camera* change, TarnHost::CameraSignIn* in_addresses) {
    TarnHost::CameraAddress address;
    QString why;
    if (column == kDevice) {
      TarnHost::ReadDeviceAddress(Cell(column), &address, &why);
      change->device_url = address.url;
    } else {
      TarnHost::ReadCameraAddress(Cell(column), &address, &why);
      change->streams.push_back({column == kMain ? kMainStream : kSubStream, address.url});
    }
    if (why.isEmpty()) {
      TarnHost::AddSignIn(address, in_addresses, &why);
    }
    return why;
  }

  QString TakeSignIn(const TarnHost::CameraSignIn& in_addresses, CameraChanges::Camera* change) {
    TarnHost::CameraSignIn apart;
    if (!Cell(kUser).isEmpty()) {
      apart.user = Cell(kUser).toStdString();
    }
    if (!Password().isEmpty()) {
      apart.secret = TarnHost::CSecret(Password().toStdString());
    }
    const TarnHost::CameraSignIn all = TarnHost::JoinSignIn(apart, in_addresses);
    change->user = all.user;
    change->secret = all.secret;
    if (Has(kUser)) {
      change->user = all.user.value_or(std::string());
    }
    const QString why = TarnHost::WhyNoCameraUser(Cell(kUser));
    return why.isEmpty() ? TarnHost::WhyNoCameraSecret(apart.secret.value_or(TarnHost::CSecret())) : why;
  }

  /// Which camera the row is about; a reason for one that cannot be taken.
  QString Find(CameraChanges::Camera* change) {
    const QString path = Path();
    const auto by_code = by_code_.constFind(Cell(kCode));
    if (Has(kCode) && by_code != by_code_.constEnd()) {
      const bool fits =
          Text((*by_code)->name) == Cell(kName) || !Has(kRegion) || site_.PathOf((*by_code)->region_index_code) == path;
      if (!fits) {
        return CCameraCsv::tr("code %1 is \"%2\" here; neither name nor region fit.")
            .arg(Cell(kCode), Text((*by_code)->name));
      }
      change->index_code = (*by_code)->index_code;
    } else {
      const std::vector<std::string> there = by_place_.value(PlaceOf(path, Cell(kName)));
      if (there.size() > 1) {
        return CCameraCsv::tr("there are several cameras of this name; give the code of one.");
      }
      change->index_code = there.empty() ? std::string() : there.front();
    }
    if (change->index_code.empty() && (IsWithheld(kMain) || IsWithheld(kSub) || IsWithheld(kDevice))) {
      return CCameraCsv::tr("the camera is new here, and the table withholds an address of it.");
    }
    const QString key = change->index_code.empty() ? PlaceOf(path, Cell(kName)) : Text(change->index_code);
    if (seen_.contains(key)) {
      return CCameraCsv::tr("the camera of line %1 once more.").arg(seen_.value(key));
    }
    const QString why = TakeRegion(path, change);
    if (why.isEmpty()) {
      seen_.insert(key, row_->line);
    }
    return why;
  }

  QString Path() const {
    QStringList names;
    for (const QString& name : Cell(kRegion).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
      names.append(name.trimmed());
    }
    return Has(kRegion) ? names.join(QLatin1Char('/')) : QString();
  }

  QString TakeRegion(const QString& path, CameraChanges::Camera* change) {
    if (!Has(kRegion)) {
      return QString();
    }
    const QStringList names = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& name : names) {
      const QString why = TarnHost::WhyNoRegionName(name);
      if (!why.isEmpty()) {
        return why;
      }
    }
    const auto* camera = by_code_.value(Text(change->index_code));
    if (!camera || site_.PathOf(camera->region_index_code) != path) {
      change->region = RegionAt(names);
    }
    return QString();
  }

  /// Its code, or its place among the new ones.
  std::string RegionAt(const QStringList& names) {
    if (names.isEmpty()) {
      return {};
    }
    const QString path = names.join(QLatin1Char('/'));
    const auto known = regions_.constFind(path);
    if (known != regions_.constEnd()) {
      return *known;
    }
    const std::string above = RegionAt(names.mid(0, names.size() - 1));
    const std::string code = "#" + std::to_string(plan_.changes.regions.size());
    plan_.changes.regions.push_back({{}, names.last().toStdString(), above});
    ++plan_.new_regions;
    regions_.insert(path, code);
    return code;
  }

  void Add(CameraChanges::Camera change) {
    if (change.index_code.empty()) {
      ++plan_.added;
      change.streams.erase(std::remove_if(change.streams.begin(), change.streams.end(),
                                          [](const auto& stream) { return stream.url.empty(); }),
                           change.streams.end());
    } else if (IsSame(change)) {
      ++plan_.same;
      return;
    } else {
      ++plan_.changed;
    }
    plan_.changes.cameras.push_back(std::move(change));
  }

  bool IsSame(const CameraChanges::Camera& change) const {
    const auto& camera = *by_code_.value(Text(change.index_code));
    const auto found = site_.access.find(change.index_code);
    const TarnHost::CameraAccess access = found == site_.access.end() ? TarnHost::CameraAccess() : found->second;
    const bool has_same_streams = std::all_of(change.streams.begin(), change.streams.end(), [&](const auto& stream) {
      return site_.Address(change.index_code, stream.type) == stream.url;
    });
    return has_same_streams && change.name == camera.name &&
           change.region.value_or(camera.region_index_code) == camera.region_index_code &&
           change.user.value_or(access.user) == access.user && change.secret.value_or(access.secret) == access.secret &&
           change.device_url.value_or(access.device_url) == access.device_url;
  }

  const SiteTable& site_;
  QHash<QString, std::string> regions_;  // by path, those that are to be made as well
  QHash<QString, std::vector<std::string>> by_place_;
  QHash<QString, const ResourceTreeKit::CCameraItemInfo*> by_code_;
  QHash<QString, int> seen_;  // lines of the file
  int places_[kColumnCount] = {};
  const CCsvText::Row* row_ = nullptr;
  CameraImport plan_;
};

}  // namespace

std::vector<QStringList> CCameraCsv::Rows(const SiteTable& site, bool with_passwords, int* withheld) {
  *withheld = 0;
  QStringList header;
  for (int column = 0; column < kColumnCount; ++column) {
    if (column != kPassword || with_passwords) {
      header.append(QLatin1String(kColumns[column]));
    }
  }
  std::vector<QStringList> rows = {header};
  const auto shown = [with_passwords, withheld](const std::string& url) {
    const bool is_withheld = !with_passwords && TarnHost::MayHoldPassword(url);
    *withheld += int(is_withheld);
    return is_withheld ? QString(QLatin1String(kWithheld)) : Text(url);
  };
  for (const auto& camera : site.cameras) {
    const auto found = site.access.find(camera.index_code);
    const TarnHost::CameraAccess access = found == site.access.end() ? TarnHost::CameraAccess() : found->second;
    QStringList row = {Text(camera.index_code),
                       Text(camera.name),
                       site.PathOf(camera.region_index_code),
                       shown(site.Address(camera.index_code, kMainStream)),
                       shown(site.Address(camera.index_code, kSubStream)),
                       Text(access.user)};
    if (with_passwords) {
      row.append(Text(access.secret.Reveal()));
    }
    row.append(shown(access.device_url));
    rows.push_back(row);
  }
  return rows;
}

std::optional<CameraImport> CCameraCsv::Plan(const CCsvText& table, const SiteTable& site, QString* why) {
  if (table.Rows().empty()) {
    *why = tr("The file is empty.");
    return std::nullopt;
  }
  CPlanner planner(site);
  const QStringList missing = planner.TakeHeader(table.Rows().front().cells);
  if (!missing.isEmpty()) {
    *why = tr("The first line has no column \"%1\". Known columns are: %2.")
               .arg(missing.join(QStringLiteral("\", \"")),
                    QStringList(std::begin(kColumns), std::end(kColumns)).join(QStringLiteral(", ")));
    return std::nullopt;
  }
  for (size_t place = 1; place < table.Rows().size(); ++place) {
    planner.TakeRow(table.Rows()[place]);
  }
  return planner.Plan();
}

}  // namespace TarnClient
