#include "store/camera_repository.h"

#include <algorithm>
#include <limits>

#include "store/store_functions.h"
#include "store/store_texts.h"
#include "store/text_rules.h"

namespace TarnHost::Store {
namespace {

const char kAuthority[] = "camera_authority";

// Regions and cameras are numbered from 1; 0 stands for none.
std::string CodeText(const QVariant& number) {
  return number.toInt() == 0 ? std::string() : std::to_string(number.toInt());
}

std::string Text(const QSqlQuery& query, int column) {
  return query.value(column).toString().toStdString();
}

}  // namespace

CameraList CCameraRepository::List() {
  CameraList list;
  engine_.ForEach("SELECT id, parent_id, name FROM region ORDER BY id", {}, [&](const QSqlQuery& query) {
    list.regions.push_back({CodeText(query.value(0)), Text(query, 2), CodeText(query.value(1))});
  });
  engine_.ForEach("SELECT id, region_id, name, online FROM camera ORDER BY id", {}, [&](const QSqlQuery& query) {
    list.cameras.push_back(
        {CodeText(query.value(0)), Text(query, 2), CodeText(query.value(1)), query.value(3).toInt() != 0});
  });
  return list;
}

std::vector<NamedCamera> CCameraRepository::Names() {
  std::vector<NamedCamera> cameras;
  engine_.ForEach("SELECT id, name FROM camera", {}, [&](const QSqlQuery& query) {
    cameras.push_back({CodeText(query.value(0)), Text(query, 1)});
  });
  return cameras;
}

bool CCameraRepository::Has(int32_t camera) {
  return engine_.Value("SELECT id FROM camera WHERE id = ?", {camera}).isValid();
}

std::optional<std::list<ptz_plugin_protocol::PresetInfo>> CCameraRepository::Presets(int32_t camera) {
  if (!Has(camera)) {
    return std::nullopt;
  }
  std::list<ptz_plugin_protocol::PresetInfo> presets;
  engine_.ForEach("SELECT preset_no, name FROM camera_preset WHERE camera_id = ? ORDER BY preset_no", {camera},
                  [&](const QSqlQuery& query) {
                    presets.push_back({query.value(0).toInt(), Text(query, 1)});
                  });
  return presets;
}

std::optional<std::list<int32_t>> CCameraRepository::StreamTypes(int32_t camera) {
  if (!Has(camera)) {
    return std::nullopt;
  }
  std::list<int32_t> types;
  engine_.ForEach("SELECT stream_type FROM camera_stream WHERE camera_id = ? ORDER BY stream_type", {camera},
                  [&](const QSqlQuery& query) { types.push_back(query.value(0).toInt()); });
  return types;
}

std::vector<std::string> CCameraRepository::Favorites(int32_t user) {
  std::vector<std::string> codes;
  engine_.ForEach(
      "SELECT favorite.camera_id FROM favorite_camera favorite JOIN camera ON camera.id = favorite.camera_id"
      " WHERE favorite.user_id = ? ORDER BY favorite.camera_id",
      {user}, [&](const QSqlQuery& query) { codes.push_back(CodeText(query.value(0))); });
  return codes;
}

bool CCameraRepository::SetFavorite(int32_t user, int32_t camera, bool favorite) {
  engine_.Execute("DELETE FROM favorite_camera WHERE user_id = ? AND camera_id = ?", {user, camera});
  return !favorite || engine_.Execute(
                          "INSERT INTO favorite_camera (user_id, camera_id)"
                          " SELECT CAST(? AS INTEGER), id FROM camera WHERE id = ?",
                          {user, camera}) == 1;
}

// Of many cameras all are read at once: a question for each would take a server long.
std::map<int32_t, CameraAccess> CCameraRepository::ReadAccess(const std::vector<int32_t>& cameras) {
  constexpr size_t kMostByOne = 64;
  std::map<int32_t, CameraAccess> found;
  const auto take_camera = [&found](const QSqlQuery& query) {
    found[query.value(0).toInt()] = {
        CodeText(query.value(0)), {}, Text(query, 1), CSecret(Text(query, 2)), Text(query, 3)};
  };
  const auto take_stream = [&found](const QSqlQuery& query) {
    const auto camera = found.find(query.value(0).toInt());
    if (camera != found.end()) {
      camera->second.streams.push_back({query.value(1).toInt(), Text(query, 2)});
    }
  };
  const QString all_cameras =
      "SELECT id, coalesce(login, ''), coalesce(secret, ''), coalesce(device_url, '') FROM camera"
      " LEFT JOIN camera_access ON camera_id = id";
  const QString all_streams = "SELECT camera_id, stream_type, url FROM camera_stream";
  const QString in_order = " ORDER BY camera_id, stream_type";
  if (cameras.size() > kMostByOne) {
    engine_.ForEach(all_cameras, {}, take_camera);
    engine_.ForEach(all_streams + in_order, {}, take_stream);
    return found;
  }
  for (const int32_t camera : cameras) {
    engine_.ForEach(all_cameras + " WHERE id = ?", {camera}, take_camera);
    if (found.count(camera) != 0 && found[camera].streams.empty()) {
      engine_.ForEach(all_streams + " WHERE camera_id = ?" + in_order, {camera}, take_stream);
    }
  }
  return found;
}

CameraAccessList CCameraRepository::Access(const std::vector<int32_t>& cameras) {
  CameraAccessList list;
  const std::set<int32_t> wanted(cameras.begin(), cameras.end());
  for (auto& [id, access] : ReadAccess(cameras)) {
    if (wanted.count(id) != 0) {
      list.cameras.push_back(access);
    }
  }
  list.authority = Authority();
  list.is_pretended = IsPretended();
  return list;
}

bool CCameraRepository::IsPretended() {
  return engine_.Value("SELECT 1 FROM store_info WHERE name = 'pretended'").isValid();
}

std::string CCameraRepository::Authority() {
  return engine_.Value("SELECT value FROM store_info WHERE name = ?", {kAuthority}).toString().toStdString();
}

void CCameraRepository::SetAuthority(const std::string& pem) {
  engine_.Execute(
      "INSERT INTO store_info (name, value) VALUES (?, ?) ON CONFLICT (name) DO UPDATE SET value = excluded.value",
      {kAuthority, ToQt(pem)});
}

std::map<int32_t, RegionRow> CCameraRepository::Regions() {
  std::map<int32_t, RegionRow> rows;
  engine_.ForEach("SELECT id, parent_id, name FROM region", {}, [&rows](const QSqlQuery& query) {
    rows[query.value(0).toInt()] = {query.value(0).toInt(), query.value(1).toInt(), Text(query, 2)};
  });
  return rows;
}

std::map<int32_t, CameraRow> CCameraRepository::Cameras() {
  std::map<int32_t, CameraRow> rows;
  engine_.ForEach("SELECT id, region_id, name FROM camera", {}, [&rows](const QSqlQuery& query) {
    rows[query.value(0).toInt()] = {query.value(0).toInt(), query.value(1).toInt(), Text(query, 2)};
  });
  return rows;
}

// Rows that were put in past the program have not been counted.
int32_t CCameraRepository::NewNumbers(const char* table, int32_t count) {
  const QString name = QLatin1String(table);
  const qint64 counted = engine_.Value("SELECT value FROM counter WHERE name = ?", {name}).toLongLong();
  const qint64 highest = engine_.Value("SELECT max(id) FROM " + name).toLongLong();
  const qint64 last = std::max(counted, highest);
  if (last + count > std::numeric_limits<int32_t>::max()) {
    throw CStoreError(CStoreError::kRefused, kNoMoreCodes);
  }
  if (CStoreFunctions* functions = engine_.Functions()) {
    functions->Advance(table, last + count - counted);
  } else {
    engine_.Execute("UPDATE counter SET value = ? WHERE name = ?", {last + count, name});
  }
  return static_cast<int32_t>(last + 1);
}

// In statements of many rows each, for over a line every one costs a round trip. What is left over goes row by row: so
// the engine keeps two statements prepared, not one for each number of rows.
void CCameraRepository::ExecuteInParts(const QString& before, const QString& row, const QString& behind,
                                       const std::vector<QVariantList>& rows) {
  constexpr size_t kRowsAtOnce = 100;
  const QString one = before + row + behind;
  const QString many = before + (row + QStringLiteral(", ")).repeated(kRowsAtOnce - 1) + row + behind;
  size_t at = 0;
  for (; at + kRowsAtOnce <= rows.size(); at += kRowsAtOnce) {
    QVariantList values;
    for (size_t place = at; place < at + kRowsAtOnce; ++place) {
      values += rows[place];
    }
    engine_.Execute(many, values);
  }
  for (; at < rows.size(); ++at) {
    engine_.Execute(one, rows[at]);
  }
}

void CCameraRepository::Put(const std::vector<RegionRow>& rows) {
  std::vector<QVariantList> values;
  for (const RegionRow& row : rows) {
    values.push_back({row.id, row.parent, ToQt(row.name)});
  }
  ExecuteInParts("INSERT INTO region (id, parent_id, name) VALUES ", "(?, ?, ?)",
                 " ON CONFLICT (id) DO UPDATE SET parent_id = excluded.parent_id, name = excluded.name", values);
}

void CCameraRepository::Put(const std::vector<CameraRow>& rows) {
  std::vector<QVariantList> values;
  for (const CameraRow& row : rows) {
    values.push_back({row.id, row.region, ToQt(row.name)});
  }
  ExecuteInParts("INSERT INTO camera (id, region_id, name, online) VALUES ", "(?, ?, ?, 1)",
                 " ON CONFLICT (id) DO UPDATE SET region_id = excluded.region_id, name = excluded.name", values);
}

void CCameraRepository::PutStreams(const std::vector<std::pair<int32_t, CameraStream>>& streams_by_camera) {
  std::vector<QVariantList> values;
  for (const auto& [camera, stream] : streams_by_camera) {
    values.push_back({camera, stream.type, ToQt(stream.url)});
  }
  ExecuteInParts("INSERT INTO camera_stream (camera_id, stream_type, url) VALUES ", "(?, ?, ?)",
                 " ON CONFLICT (camera_id, stream_type) DO UPDATE SET url = excluded.url", values);
}

void CCameraRepository::RemoveStreams(const std::vector<std::pair<int32_t, CameraStream>>& streams_by_camera) {
  std::map<int32_t, std::vector<int32_t>> cameras_by_type;
  for (const auto& [camera, stream] : streams_by_camera) {
    cameras_by_type[stream.type].push_back(camera);
  }
  for (const auto& [type, cameras] : cameras_by_type) {
    RemoveAll(QStringLiteral("camera_stream WHERE stream_type = %1 AND camera_id").arg(type), cameras);
  }
}

// A database may repeat in its words what it could not write.
void CCameraRepository::PutAccess(const std::map<int32_t, CameraAccess>& access_by_camera) {
  std::vector<QVariantList> values;
  for (const auto& [camera, access] : access_by_camera) {
    values.push_back({camera, ToQt(access.user), ToQt(access.secret.Reveal()), ToQt(access.device_url)});
  }
  try {
    ExecuteInParts("INSERT INTO camera_access (camera_id, login, secret, device_url) VALUES ", "(?, ?, ?, ?)",
                   " ON CONFLICT (camera_id) DO UPDATE SET login = excluded.login, secret = excluded.secret,"
                   " device_url = excluded.device_url",
                   values);
  } catch (const CStoreError& error) {
    if (error.GetKind() != CStoreError::kFailed) {
      throw CStoreError(error.GetKind(), error.Text());
    }
    throw CStoreError(CStoreError::kFailed,
                      QT_TRANSLATE_NOOP("TarnHost::Store", "The plan store cannot keep how to sign in to the camera."));
  }
}

void CCameraRepository::RemoveAll(const QString& rows, const std::vector<int32_t>& numbers) {
  std::vector<QVariantList> values;
  for (const int32_t number : numbers) {
    values.push_back({number});
  }
  ExecuteInParts(QStringLiteral("DELETE FROM %1 IN (").arg(rows), "?", ")", values);
}

void CCameraRepository::RemoveCameras(const std::vector<int32_t>& cameras) {
  for (const char* table : {"camera_stream", "camera_preset", "camera_access", "favorite_camera"}) {
    RemoveAll(QLatin1String(table) + QStringLiteral(" WHERE camera_id"), cameras);
  }
  RemoveAll("camera WHERE id", cameras);
}

void CCameraRepository::RemoveRegions(const std::vector<int32_t>& regions) {
  RemoveAll("region WHERE id", regions);
}

void CCameraRepository::SetPresets(int32_t camera, const std::vector<ptz_plugin_protocol::PresetInfo>& presets) {
  engine_.Execute("DELETE FROM camera_preset WHERE camera_id = ?", {camera});
  for (const auto& preset : presets) {
    engine_.Execute("INSERT INTO camera_preset (camera_id, preset_no, name) VALUES (?, ?, ?)",
                    {camera, preset.preset_no, ToQt(preset.name)});
  }
}

}  // namespace TarnHost::Store
