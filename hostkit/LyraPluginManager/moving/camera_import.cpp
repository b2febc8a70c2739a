#include "moving/camera_import.h"

#include <utility>

namespace TarnHost::Moving {
namespace {

constexpr int kDeepestRegion = 16;

QString MainAddress(const CameraRecord& camera) {
  const auto main = camera.streams.find(0);
  if (main == camera.streams.end()) {
    return QString();
  }
  return main->second.value_or(QString());
}

QString PlaceOf(const CameraRecord& camera) {
  return QString::number(camera.region) + QLatin1Char('\n') + camera.name;
}

void KeepWithheld(const CameraRecord& known, CameraRecord* camera) {
  for (auto& [type, url] : camera->streams) {
    const auto before = known.streams.find(type);
    if (!url && before != known.streams.end()) {
      url = before->second;
    }
    url = url.value_or(QString());
  }
  if (!camera->device_url) {
    camera->device_url = known.device_url;
  }
}

// What is withheld is empty; answers what is said of it.
QString DropWithheld(CameraRecord* camera) {
  bool is_withheld = !camera->device_url;
  for (auto& [type, url] : camera->streams) {
    is_withheld = is_withheld || !url;
    url = url.value_or(QString());
  }
  camera->device_url = camera->device_url.value_or(QString());
  if (!is_withheld) {
    return QString();
  }
  return QStringLiteral(", without an address that the file withholds");
}

QStringList DifferenceOf(const CameraRecord& known, const CameraRecord& camera) {
  QStringList what;
  AddIf(camera.name != known.name, "name", &what);
  AddIf(camera.region != known.region, "place", &what);
  AddIf(camera.streams != known.streams || camera.device_url != known.device_url, "addresses", &what);
  AddIf(camera.user != known.user, "user", &what);
  AddIf(camera.presets != known.presets, "presets", &what);
  return what;
}

}  // namespace

CCameraImport::CCameraImport(const StandingSite& here, bool is_same_site, ImportPlan* plan)
    : is_same_site_(is_same_site),
      plan_(plan),
      region_numbers_(here.last.region, is_same_site),
      camera_numbers_(here.last.camera, is_same_site) {
  region_numbers_.Note(here.records.regions);
  camera_numbers_.Note(here.records.cameras);
  for (const RegionRecord& region : here.records.regions) {
    regions_[region.code] = &region;
    regions_by_place_.emplace(std::pair(region.parent, region.name), &region);
    region_parents_[region.code] = region.parent;
  }
  for (const CameraRecord& camera : here.records.cameras) {
    cameras_[camera.code] = &camera;
    cameras_by_address_[MainAddress(camera)].push_back(&camera);
    cameras_by_place_[PlaceOf(camera)].push_back(&camera);
  }
  cameras_by_address_.erase(QString());
}

void CCameraImport::TakeRegions(std::vector<RegionRecord> regions) {
  std::set<int32_t> seen;
  DropDoubles("Region", &seen, &regions, &plan_->report);
  for (RegionRecord& region : TopDown("Region", std::move(regions), &plan_->report)) {
    const int32_t* parent = Find(region_codes_, region.parent);
    if (!parent) {
      plan_->report.LeaveOut("Region", region, QLatin1String(kNoParent));
      continue;
    }
    region.parent = *parent;
    const RegionRecord* known = Known(region);
    const QString why = WhyNot(region, known);
    if (why.isEmpty()) {
      TakeRegion(known, std::move(region));
    } else {
      plan_->report.LeaveOut("Region", region, why);
    }
  }
  plan_->last.region = region_numbers_.Last();
}

const RegionRecord* CCameraImport::Namesake(const RegionRecord& region) const {
  const auto found = regions_by_place_.find({region.parent, region.name});
  if (found == regions_by_place_.end()) {
    return nullptr;
  }
  return found->second;
}

const RegionRecord* CCameraImport::Known(const RegionRecord& region) const {
  const auto same = regions_.find(region.code);
  if (is_same_site_ && same != regions_.end() &&
      (same->second->name == region.name || same->second->parent == region.parent)) {
    return same->second;
  }
  return Namesake(region);
}

QString CCameraImport::WhyNot(const RegionRecord& region, const RegionRecord* known) const {
  const RegionRecord* namesake = Namesake(region);
  if (namesake && namesake != known) {
    return QLatin1String(kNamesake);
  }
  if (LevelOf(region_parents_, region.parent) + 1 > kDeepestRegion) {
    return QStringLiteral("regions are nested %1 levels deep at most").arg(kDeepestRegion);
  }
  return QString();
}

void CCameraImport::TakeRegion(const RegionRecord* known, RegionRecord region) {
  const int32_t file_code = region.code;
  region.code = region_numbers_.Of(known, file_code);
  region_codes_[file_code] = region.code;
  if (!known) {
    region_parents_[region.code] = region.parent;
    plan_->report.NoteTaken("Region", region.name, region.code, file_code);
    plan_->regions.push_back({std::move(region), true});
    return;
  }
  QStringList what;
  AddIf(is_same_site_ && known->name != region.name, "name", &what);
  AddIf(is_same_site_ && known->parent != region.parent, "place", &what);
  if (plan_->report.NoteChanged(Named("Region", region.name, region.code), what)) {
    region_parents_[region.code] = region.parent;
    plan_->regions.push_back({std::move(region), false});
  }
}

void CCameraImport::TakeCameras(std::vector<CameraRecord> cameras) {
  std::set<int32_t> seen;
  DropDoubles("Camera", &seen, &cameras, &plan_->report);
  for (CameraRecord& camera : cameras) {
    const int32_t* region = Find(region_codes_, camera.region);
    if (!region) {
      plan_->report.LeaveOut("Camera", camera, QLatin1String(kNoParent));
      continue;
    }
    camera.region = *region;
    const CameraRecord* known = Known(camera);
    if (known) {
      ChangeCamera(*known, std::move(camera));
    } else if (cameras_by_place_.count(PlaceOf(camera)) != 0) {
      plan_->report.LeaveOut("Camera", camera,
                             QStringLiteral("there are several cameras of this name in the same place"));
    } else {
      AddCamera(std::move(camera));
    }
  }
  plan_->last.camera = camera_numbers_.Last();
}

const CameraRecord* CCameraImport::Known(const CameraRecord& camera) const {
  const auto same = cameras_.find(camera.code);
  if (is_same_site_ && same != cameras_.end() &&
      (same->second->name == camera.name || same->second->region == camera.region)) {
    return same->second;
  }
  const auto only_one = [](const Cameras& all, const QString& text) -> const CameraRecord* {
    const auto found = all.find(text);
    if (found == all.end() || found->second.size() > 1) {
      return nullptr;
    }
    return found->second.front();
  };
  if (const CameraRecord* by_address = only_one(cameras_by_address_, MainAddress(camera))) {
    return by_address;
  }
  return only_one(cameras_by_place_, PlaceOf(camera));
}

void CCameraImport::AddCamera(CameraRecord camera) {
  const int32_t file_code = camera.code;
  camera.code = camera_numbers_.New(file_code);
  camera_codes_[file_code] = camera.code;
  const QString remark = DropWithheld(&camera);
  plan_->report.NoteTaken("Camera", camera.name, camera.code, file_code, remark);
  plan_->cameras.push_back({std::move(camera), true});
}

// Of several in the file that are one here the first counts.
void CCameraImport::ChangeCamera(const CameraRecord& known, CameraRecord camera) {
  camera_codes_[camera.code] = known.code;
  camera.code = known.code;
  QStringList what;
  if (is_same_site_ && changed_cameras_.insert(known.code).second) {
    KeepWithheld(known, &camera);
    what = DifferenceOf(known, camera);
  }
  if (plan_->report.NoteChanged(Named("Camera", camera.name, camera.code), what)) {
    plan_->cameras.push_back({std::move(camera), false});
  }
}

}  // namespace TarnHost::Moving
