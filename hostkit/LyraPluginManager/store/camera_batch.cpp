#include "store/camera_batch.h"

#include <algorithm>
#include <iterator>

#include "store/camera_rules.h"
#include "store/plan_records.h"
#include "store/store_texts.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

constexpr int kDeepestRegion = 16;
constexpr int32_t kHighestStream = 15;
constexpr int kHighestPreset = 65535;
const char kRegionGone[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The region does not exist or was deleted in the meantime.");
const char kCameraGone[] =
    QT_TRANSLATE_NOOP("TarnHost::Store", "The camera does not exist or was deleted in the meantime.");

void Require(const CStoreText& fault, const std::string& named) {
  if (!fault.IsEmpty()) {
    throw CStoreError(CStoreError::kRefused,
                      {QT_TRANSLATE_NOOP("TarnHost::Store", "\"%1\": %2"), {ToQt(named), fault}});
  }
}

QString TextOf(const std::string& bytes, const std::string& named) {
  const std::optional<QString> text = TextOfBytes(bytes);
  if (!text) {
    Require(kNoText, named);
  }
  return text.value_or(QString());
}

template <class Value>
void RequireOnce(const Value& value, const CStoreText& fault, const std::string& named, std::set<Value>* seen) {
  if (!seen->insert(value).second) {
    Require(fault, named);
  }
}

/// Answers whether the value became another.
template <class Value>
bool Take(const Value& fresh, Value* value) {
  if (fresh == *value) {
    return false;
  }
  *value = fresh;
  return true;
}

std::vector<std::string> CodesOf(const std::vector<int32_t>& ids) {
  std::vector<std::string> codes;
  std::transform(ids.begin(), ids.end(), std::back_inserter(codes), [](int32_t id) { return std::to_string(id); });
  return codes;
}

bool IsSame(const ptz_plugin_protocol::PresetInfo& left, const ptz_plugin_protocol::PresetInfo& right) {
  return left.preset_no == right.preset_no && left.name == right.name;
}

}  // namespace

CameraChangesMade CCameraBatch::Run(const CameraChanges& changes) {
  Read(changes);
  TakeRegions(changes.regions);
  TakeCameras(changes.cameras);
  TakeRemovals(changes);
  CheckRegions();
  CheckEmpty();
  Write();
  return {CodesOf(region_ids_), CodesOf(camera_ids_), CountChanges()};
}

void CCameraBatch::Read(const CameraChanges& changes) {
  regions_ = repository_.Regions();
  cameras_ = repository_.Cameras();
  std::vector<int32_t> known;
  for (const CameraChanges::Camera& camera : changes.cameras) {
    if (!camera.index_code.empty()) {
      known.push_back(ParseCode(camera.index_code));
    }
  }
  for (CameraAccess& access : repository_.Access(known).cameras) {
    access_[ParseCode(access.index_code)] = std::move(access);
  }
}

// All of them first: one may name another that comes later.
void CCameraBatch::NumberRegions(const std::vector<CameraChanges::Region>& regions) {
  const auto is_new = [](const CameraChanges::Region& region) { return region.index_code.empty(); };
  const auto count = static_cast<int32_t>(std::count_if(regions.begin(), regions.end(), is_new));
  int32_t next = 0;
  if (count > 0) {
    next = repository_.NewRegions(count);
  }
  for (const CameraChanges::Region& region : regions) {
    const int32_t id = is_new(region) ? next++ : ParseCode(region.index_code);
    if (is_new(region)) {
      regions_[id].id = id;
    } else if (regions_.count(id) == 0) {
      throw CStoreError(CStoreError::kGone, kRegionGone);
    }
    region_ids_.push_back(id);
  }
}

void CCameraBatch::TakeRegions(const std::vector<CameraChanges::Region>& regions) {
  NumberRegions(regions);
  for (size_t place = 0; place < regions.size(); ++place) {
    const CameraChanges::Region& change = regions[place];
    RegionRow& row = regions_[region_ids_[place]];
    bool is_changed = change.index_code.empty();
    is_changed = Take(change.name.value_or(row.name), &row.name) || is_changed;
    if (change.parent && Take(RegionOf(*change.parent), &row.parent)) {
      moved_regions_.insert(row.id);
      is_changed = true;
    }
    if (is_changed) {
      Require(FaultOfRegionName(TextOf(row.name, row.name)), row.name);
      changed_regions_.insert(row.id);
    }
  }
}

// "#3" is the fourth of the changes' own.
int32_t CCameraBatch::RegionOf(const std::string& code) const {
  if (code.empty()) {
    return 0;
  }
  int32_t id = ParseCode(code);
  if (code.front() == '#') {
    const auto place = static_cast<size_t>(ToQt(code.substr(1)).toUInt());
    id = place < region_ids_.size() ? region_ids_[place] : 0;
  }
  if (regions_.count(id) == 0) {
    throw CStoreError(CStoreError::kGone, kRegionGone);
  }
  return id;
}

void CCameraBatch::TakeCameras(const std::vector<CameraChanges::Camera>& cameras) {
  const auto is_new = [](const CameraChanges::Camera& camera) { return camera.index_code.empty(); };
  const auto count = static_cast<int32_t>(std::count_if(cameras.begin(), cameras.end(), is_new));
  int32_t next = 0;
  if (count > 0) {
    next = repository_.NewCameras(count);
  }
  std::set<int32_t> seen;
  for (const CameraChanges::Camera& change : cameras) {
    const int32_t id = is_new(change) ? next++ : ParseCode(change.index_code);
    if (is_new(change)) {
      cameras_[id].id = id;
      changed_cameras_.insert(id);
    } else if (cameras_.count(id) == 0) {
      throw CStoreError(CStoreError::kGone, kCameraGone);
    }
    RequireOnce(id, QT_TRANSLATE_NOOP("TarnHost::Store", "The camera stands twice in the changes."), cameras_[id].name,
                &seen);
    camera_ids_.push_back(id);
    TakeCamera(change, id);
  }
}

void CCameraBatch::TakeCamera(const CameraChanges::Camera& change, int32_t id) {
  CameraRow& row = cameras_[id];
  bool is_changed = Take(change.name.value_or(row.name), &row.name);
  if (change.region) {
    is_changed = Take(RegionOf(*change.region), &row.region) || is_changed;
  }
  if (is_changed || change.index_code.empty()) {
    Require(FaultOfCameraName(TextOf(row.name, row.name)), row.name);
    changed_cameras_.insert(id);
  }
  TakeAccess(change, id);
  TakePresets(change, id);
}

void CCameraBatch::TakeAccess(const CameraChanges::Camera& change, int32_t id) {
  CameraAccess access = access_[id];
  CameraSignIn in_addresses;
  const std::string& name = cameras_[id].name;
  std::set<int32_t> types;
  for (const CameraStream& stream : change.streams) {
    RequireOnce(stream.type, QT_TRANSLATE_NOOP("TarnHost::Store", "A stream stands twice in the changes."), name,
                &types);
    TakeStream(stream, id, &in_addresses);
  }
  if (change.device_url) {
    CameraAddress address;
    Require(ReadDeviceAddress(TextOf(*change.device_url, name), &address), name);
    Require(AddSignIn(address, &in_addresses), name);
    access.device_url = address.url;
  }
  const CameraSignIn sign_in = JoinSignIn({change.user, change.secret}, in_addresses);
  access.user = sign_in.user.value_or(access.user);
  access.secret = sign_in.secret.value_or(access.secret);
  Require(FaultOfUser(TextOf(access.user, name)), name);
  Require(FaultOfSecret(access.secret), name);
  const CameraAccess& before = access_[id];
  if (access.user != before.user || access.secret != before.secret || access.device_url != before.device_url) {
    changed_access_[id] = access;
  }
}

void CCameraBatch::TakeStream(const CameraStream& stream, int32_t id, CameraSignIn* in_addresses) {
  const std::string& name = cameras_[id].name;
  if (stream.type < 0 || stream.type > kHighestStream) {
    Require({QT_TRANSLATE_NOOP("TarnHost::Store", "There is no stream %1."), {QString::number(stream.type)}}, name);
  }
  CameraAddress address;
  Require(ReadStreamAddress(TextOf(stream.url, name), &address), name);
  Require(AddSignIn(address, in_addresses), name);
  const std::vector<CameraStream>& before = access_[id].streams;
  const auto known = std::find_if(before.begin(), before.end(),
                                  [&stream](const CameraStream& other) { return other.type == stream.type; });
  const bool is_known = known != before.end();
  if (address.url.empty() && is_known) {
    removed_streams_.emplace_back(id, stream);
  } else if (!address.url.empty() && (!is_known || known->url != address.url)) {
    put_streams_.push_back({id, {stream.type, address.url}});
  }
}

void CCameraBatch::TakePresets(const CameraChanges::Camera& change, int32_t id) {
  if (!change.presets) {
    return;
  }
  std::set<int32_t> numbers;
  for (const auto& preset : *change.presets) {
    const bool is_fine = preset.preset_no > 0 && preset.preset_no <= kHighestPreset;
    if (!is_fine || !numbers.insert(preset.preset_no).second) {
      Require({QT_TRANSLATE_NOOP("TarnHost::Store", "There cannot be a preset %1, or not twice."),
               {QString::number(preset.preset_no)}},
              cameras_[id].name);
    }
    Require(FaultOfCameraName(TextOf(preset.name, cameras_[id].name)), cameras_[id].name);
  }
  const auto before = repository_.Presets(id);
  const bool is_same =
      before && std::equal(before->begin(), before->end(), change.presets->begin(), change.presets->end(), &IsSame);
  if (!is_same && !(change.presets->empty() && !before)) {
    presets_[id] = *change.presets;
  }
}

// What somebody else has removed by now is gone, as it was to be.
void CCameraBatch::TakeRemovals(const CameraChanges& changes) {
  for (const std::string& code : changes.removed_cameras) {
    if (cameras_.erase(ParseCode(code)) != 0) {
      removed_cameras_.push_back(ParseCode(code));
      DropChanges(removed_cameras_.back());
    }
  }
  for (const std::string& code : changes.removed_regions) {
    const auto found = regions_.find(ParseCode(code));
    if (found != regions_.end()) {
      changed_regions_.erase(found->first);
      moved_regions_.erase(found->first);
      removed_regions_.insert(*found);
      regions_.erase(found);
    }
  }
}

void CCameraBatch::DropChanges(int32_t camera) {
  const auto is_of_camera = [camera](const auto& stream) { return stream.first == camera; };
  for (auto* streams : {&put_streams_, &removed_streams_}) {
    streams->erase(std::remove_if(streams->begin(), streams->end(), is_of_camera), streams->end());
  }
  changed_cameras_.erase(camera);
  changed_access_.erase(camera);
  presets_.erase(camera);
}

void CCameraBatch::CheckRegions() const {
  std::map<std::pair<int32_t, std::string>, int> names;
  for (const auto& [id, region] : regions_) {
    names[{region.parent, region.name}] += 1;
  }
  for (const int32_t id : changed_regions_) {
    const RegionRow& region = regions_.at(id);
    if (names[{region.parent, region.name}] > 1) {
      Require(QT_TRANSLATE_NOOP("TarnHost::Store", "There is a region of this name already."), region.name);
    }
  }
  if (!moved_regions_.empty()) {
    for (const auto& [id, region] : regions_) {
      CheckLevel(region);
    }
  }
}

// With a region moves all that is below it. What stood too deep before is no obstacle to other changes.
void CCameraBatch::CheckLevel(const RegionRow& region) const {
  int level = 1;
  bool is_moved = moved_regions_.count(region.id) != 0;
  auto above = regions_.find(region.parent);
  while (above != regions_.end() && level <= kDeepestRegion) {
    ++level;
    is_moved = is_moved || moved_regions_.count(above->first) != 0;
    above = regions_.find(above->second.parent);
  }
  if (is_moved && level > kDeepestRegion) {
    Require({QT_TRANSLATE_NOOP("TarnHost::Store",
                               "Regions can be nested %1 levels deep at most, and none stands below itself."),
             {QString::number(kDeepestRegion)}},
            region.name);
  }
}

void CCameraBatch::CheckEmpty() const {
  const auto require_empty = [this](int32_t region) {
    const auto found = removed_regions_.find(region);
    if (found != removed_regions_.end()) {
      throw CStoreError(CStoreError::kRefused, {QT_TRANSLATE_NOOP("TarnHost::Store", "The region \"%1\" is not empty."),
                                                {ToQt(found->second.name)}});
    }
  };
  for (const auto& [id, region] : regions_) {
    require_empty(region.parent);
  }
  for (const auto& [id, camera] : cameras_) {
    require_empty(camera.region);
  }
}

void CCameraBatch::Write() {
  std::vector<RegionRow> regions;
  for (const int32_t id : changed_regions_) {
    regions.push_back(regions_.at(id));
  }
  std::vector<CameraRow> cameras;
  for (const int32_t id : changed_cameras_) {
    cameras.push_back(cameras_.at(id));
  }
  repository_.Put(regions);
  repository_.Put(cameras);
  repository_.RemoveStreams(removed_streams_);
  repository_.PutStreams(put_streams_);
  repository_.PutAccess(changed_access_);
  for (const auto& [camera, presets] : presets_) {
    repository_.SetPresets(camera, presets);
  }
  repository_.RemoveCameras(removed_cameras_);
  std::vector<int32_t> removed;
  for (const auto& [id, region] : removed_regions_) {
    removed.push_back(id);
  }
  repository_.RemoveRegions(removed);
}

int CCameraBatch::CountChanges() const {
  std::set<int32_t> cameras = changed_cameras_;
  for (const auto& [camera, access] : changed_access_) {
    cameras.insert(camera);
  }
  for (const auto* streams : {&put_streams_, &removed_streams_}) {
    for (const auto& [camera, stream] : *streams) {
      cameras.insert(camera);
    }
  }
  for (const auto& [camera, presets] : presets_) {
    cameras.insert(camera);
  }
  return static_cast<int>(cameras.size() + changed_regions_.size() + removed_cameras_.size() + removed_regions_.size());
}

}  // namespace TarnHost::Store
