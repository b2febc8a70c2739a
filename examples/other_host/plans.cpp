// The host's services over a directory of JSON files: LyraPluginManager, TarnConfiguration and the log.
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileSystemWatcher>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QSaveFile>
#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/preview_business_interface_mgr.h"
#include "LyraPluginManager/ptz_business_interface_mgr.h"
#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "TarnConfiguration/view_config_interface.h"
#include "marlog/marlog.h"
#include "other_host.h"
#include "plain_controls.h"

using namespace view_plugin_protocol;
using ResourceData::IResourceObserver;
using Row = QJsonObject;  // kind, name, parent, family; of a plan also what GetPlanDetail() answers

namespace {

struct Refusal {
  ErrorKind kind;
  const char* text;
};

/// All that there is, in memory; a change is written before it is made here.
struct Site {
  QString directory;
  Row settings;  // site.json
  std::map<QString, Row> rows;
  QFileSystemWatcher watcher;
};

std::mutex mutex;
std::unique_ptr<Site> site;                              // guarded by the mutex; null while the host is not up
std::atomic<IResourceObserver*> root_observer{nullptr};  // the only one that ever hears of anything here

QString Q(const std::string& text) { return QString::fromStdString(text); }
std::string S(const QJsonValue& value) { return value.toString().toStdString(); }

// --- Rows; under the mutex ---

bool IsRoot(const std::string& code) { return code == "-1" || code == "-2" || code == "-4"; }

void Write(const QString& name, const Row& row) {
  QSaveFile file(site->directory + '/' + name + ".json");
  if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(row).toJson()) < 0 || !file.commit()) {
    throw Refusal{Unavailable, "The file cannot be written."};
  }
}

void Store(const std::string& code, const Row& row) {
  Write(Q(code), row);
  site->rows[Q(code)] = row;
}

void SetSetting(const QString& name, const QJsonValue& value) {
  Row settings = site->settings;
  settings[name] = value;
  Write("site", settings);
  site->settings = settings;
}

/// Left out and named in the log is what cannot be read: it comes with the next change of the directory after it can.
std::map<QString, Row> ReadRows(const QString& directory) {
  std::map<QString, Row> rows;
  for (const QFileInfo& info : QDir(directory).entryInfoList({"*.json"}, QDir::Files)) {
    QFile file(info.filePath());
    const bool is_open = file.open(QIODevice::ReadOnly);
    const Row row = is_open ? QJsonDocument::fromJson(file.readAll()).object() : Row();
    if (row.isEmpty()) {
      marlog::Write("Files", marlog::Warning, "%s has no row in it", qPrintable(info.filePath()));
      continue;
    }
    rows[info.completeBaseName()] = row;
  }
  return rows;
}

Row Existing(const std::string& code, const char* kind) {
  const auto found = site->rows.find(Q(code));
  if (found == site->rows.end() || found->second["kind"] != QLatin1String(kind)) {
    throw Refusal{Gone, "It is no longer there."};
  }
  return found->second;
}

/// Where something stands that is put below a group or a root; its family is that of what is above.
Row Below(const std::string& parent) {
  const std::map<std::string, int> roots{{"-1", 0}, {"-2", 1}, {"-4", 2}};
  const auto root = roots.find(parent);
  const QJsonValue family = root == roots.end() ? Existing(parent, "group").value("family") : QJsonValue(root->second);
  return {{"parent", Q(parent)}, {"family", family}};
}

template <class Take>
void ForEachIn(const std::string& parent, const char* kind, const Take& take) {
  Below(parent);  // throws when it is gone
  for (const auto& [code, row] : site->rows) {
    if (row["parent"] == Q(parent) && row["kind"] == QLatin1String(kind)) {
      take(code.toStdString(), row);
    }
  }
}

/// A row and all that is below it.
QStringList Subtree(const std::string& top) {
  QStringList codes{Q(top)};
  for (int at = 0; at < codes.size(); ++at) {
    for (const auto& [code, row] : site->rows) {
      if (row["parent"] == codes[at]) {
        codes << code;
      }
    }
  }
  return codes;
}

QString Checked(const std::string& name) {
  const QString text = Q(name);
  const auto is_bad = [](QChar c) { return c < ' ' || QStringLiteral("\\/:*?\"<>|").contains(c); };
  if (text.trimmed().isEmpty() || text.size() > 256 || std::any_of(text.begin(), text.end(), is_bad)) {
    throw Refusal{Refused, "A name has 1 to 256 characters and none of \\ / : * ? \" < > |"};
  }
  return text;
}

std::string Add(const Row& row) {
  const int code = site->settings["next"].toInt();
  SetSetting("next", code + 1);  // first: a code is never given out twice
  Store(std::to_string(code), row);
  return std::to_string(code);
}

/// From below, so that what could not be removed still stands somewhere.
void Delete(const std::string& code) {
  const QStringList codes = Subtree(code);
  for (auto each = codes.rbegin(); each != codes.rend(); ++each) {
    const QString path = site->directory + '/' + *each + ".json";
    if (QFile::exists(path) && !QFile::remove(path)) {
      throw Refusal{Unavailable, "The file cannot be removed."};
    }
    site->rows.erase(*each);
  }
}

// --- Records ---

QJsonArray JsonOf(const std::list<PlanPage>& pages) {
  QJsonArray array;
  for (const PlanPage& page : pages) {
    QJsonArray windows;
    for (const PlanWindow& w : page.windows) {
      windows.append(QJsonArray{w.window_no, w.content_kind, Q(w.resource_code), Q(w.resource_name), w.stream_type,
                                w.preset_no, Q(w.extra)});
    }
    array.append(QJsonArray{page.page_no, Q(page.name), page.split_type, page.dwell_seconds, windows, Q(page.extra)});
  }
  return array;
}

std::list<PlanPage> PagesOf(const Row& row) {
  std::list<PlanPage> pages;
  for (const QJsonValue& p : row["pages"].toArray()) {
    pages.push_back({p[0].toInt(), S(p[1]), p[2].toInt(), p[3].toInt(), {}, S(p[5])});
    for (const QJsonValue& w : p[4].toArray()) {
      pages.back().windows.push_back(
          {w[0].toInt(), w[1].toInt(), S(w[2]), S(w[3]), w[4].toInt(), w[5].toInt(), S(w[6])});
    }
  }
  return pages;
}

std::string ParentName(const Row& row) {
  const std::string parent = S(row["parent"]);
  return S(IsRoot(parent) ? site->settings["name"] : Existing(parent, "group")["name"]);
}

/// What a request says of a plan goes over what there is of it; an empty thumbnail leaves the old one.
void Take(Row& row, const AddPlanRequest& request) {
  row["kind"] = "plan";
  row["name"] = Checked(request.plan_name);
  row["auto"] = request.auto_play;
  row["begin"] = Q(request.begin_time);
  row["end"] = Q(request.end_time);
  row["pages"] = JsonOf(request.pages);
  if (!request.thumbnail.empty()) {
    row["thumbnail"] = QString::fromLatin1(QByteArray::fromStdString(request.thumbnail).toBase64());
  }
  row["revision"] = row["revision"].toInt() + 1;
  row["changed_at"] = QLocale::c().toString(QDateTime::currentDateTime(), "yyyy-MM-dd HH:mm:ss");
}

// --- Calls and notices ---

/// Runs a call's work under the mutex; what it throws becomes what the response says.
template <class Work>
bool Answer(ResponseHeader& response, const Work& work) {
  const std::lock_guard<std::mutex> lock(mutex);
  try {
    if (!site) {
      throw Refusal{Unavailable, "The site is closed."};
    }
    work();
    return true;
  } catch (const Refusal& refusal) {
    response.error_info = refusal.text;
    response.error_kind = refusal.kind;
    return false;
  }
}

/// Somebody else may have changed the files. The notice goes out from the event loop, without a lock.
void LookAgain() {
  std::unique_lock<std::mutex> lock(mutex);
  auto rows = ReadRows(site->directory);
  rows.erase("site");
  if (rows == site->rows) {
    return;  // our own change
  }
  site->rows.swap(rows);
  lock.unlock();
  if (IResourceObserver* observer = root_observer) {
    observer->OnResourceUpdate({ResourceData::RE_TREE_CHANGED, "root", {}, ResourceData::RT_NONE});
  }
}

}  // namespace

bool OtherHost::Open(const QString& directory) {
  QDir().mkpath(directory);
  auto opened = std::make_unique<Site>();
  opened->directory = directory;
  opened->rows = ReadRows(directory);
  opened->settings = opened->rows["site"];
  opened->rows.erase("site");
  if (opened->settings.isEmpty() && QFile::exists(directory + "/site.json")) {
    return false;
  }
  if (opened->settings.isEmpty()) {
    opened->settings = {{"name", "Plans"},
                        {"next", 100001},
                        {"plans_under_root", true},
                        {"cameras", QJsonArray{"Gate", "Yard", "Hall", "Dock"}}};
  }
  opened->watcher.addPath(directory);
  QObject::connect(&opened->watcher, &QFileSystemWatcher::directoryChanged, qApp, &LookAgain);
  const std::lock_guard<std::mutex> lock(mutex);
  site = std::move(opened);
  return true;
}

void OtherHost::Close() {
  const std::lock_guard<std::mutex> lock(mutex);
  site.reset();
}

std::string PlainControls::Station() { return "json-files"; }

std::vector<ResourceTreeKit::CCameraItemInfo> PlainControls::Cameras() {
  const std::lock_guard<std::mutex> lock(mutex);
  std::vector<ResourceTreeKit::CCameraItemInfo> cameras;
  const QJsonArray names = site ? site->settings["cameras"].toArray() : QJsonArray();
  for (const QJsonValue& name : names) {
    cameras.push_back({std::to_string(cameras.size() + 1), S(name), {}, true});
  }
  return cameras;
}

namespace LyraPluginManager {

using Views = CViewBusinessInterfaceMgr;

bool Views::GetPlanGroups(const GetPlanGroupsRequest& request, GetPlanGroupsResponse& response) {
  return Answer(response, [&] {
    if (request.parent_index_code == "root") {
      response.groups.append({S(site->settings["name"]), {}, "root", 0});
      return;
    }
    ForEachIn(request.parent_index_code, "group", [&](const std::string& code, const Row& row) {
      response.groups.append({S(row["name"]), request.parent_index_code, code, row["family"].toInt()});
    });
  });
}

bool Views::GetPlansInGroup(const GetPlansInGroupRequest& request, GetPlansInGroupResponse& response) {
  return Answer(response, [&] {
    ForEachIn(request.group_index_code, "plan", [&](const std::string& code, const Row& row) {
      const QJsonArray pages = row["pages"].toArray();
      response.plans.append({code, S(row["name"]), request.group_index_code, row["family"].toInt(),
                             pages[0][2].toInt(1), int(pages.size()), row["auto"].toBool()});
    });
  });
}

bool Views::AddPlanGroup(const AddPlanGroupRequest& request, AddPlanGroupResponse& response) {
  return Answer(response, [&] {
    Row row = Below(request.parent_index_code);
    row["kind"] = "group";
    row["name"] = Checked(request.name);
    response.index_code = Add(row);
  });
}

bool Views::UpdatePlanGroup(const UpdatePlanGroupRequest& request, UpdatePlanGroupResponse& response) {
  return Answer(response, [&] {
    Row row = Existing(request.index_code, "group");
    row["name"] = Checked(request.name);
    Store(request.index_code, row);
  });
}

bool Views::DeletePlanGroup(const DeletePlanGroupRequest& request, DeletePlanGroupResponse& response) {
  return Answer(response, [&] {
    Existing(request.index_code, "group");
    Delete(request.index_code);
  });
}

bool Views::CountBelowGroup(const CountBelowGroupRequest& request, CountBelowGroupResponse& response) {
  return Answer(response, [&] {
    Existing(request.index_code, "group");
    for (const QString& code : Subtree(request.index_code).mid(1)) {
      ++(site->rows[code]["kind"] == "group" ? response.groups : response.plans);
    }
  });
}

bool Views::AddPlan(const AddPlanRequest& request, AddPlanResponse& response) {
  return Answer(response, [&] {
    Row row = Below(request.parent_index_code);
    Take(row, request);
    row["created"] = row["changed_at"];
    response.index_code = Add(row);
  });
}

bool Views::UpdatePlan(const UpdatePlanRequest& request, UpdatePlanResponse& response) {
  return Answer(response, [&] {
    Row row = Existing(request.plan_index_code, "plan");
    if (request.revision != 0 && request.revision < row["revision"].toInt()) {
      throw Refusal{Changed, "The plan was changed by somebody else. Open it again before you change it."};
    }
    Take(row, request);
    if (!request.parent_index_code.empty()) {
      const Row place = Below(request.parent_index_code);
      if (place["family"] != row["family"]) {
        throw Refusal{Refused, "A plan cannot be moved between public and own plans."};
      }
      row["parent"] = place["parent"];
    }
    Store(request.plan_index_code, row);
  });
}

bool Views::DeletePlan(const DeletePlanResquest& request, DeletePlanResponse& response) {
  return Answer(response, [&] {
    Existing(request.plan_index_code, "plan");
    Delete(request.plan_index_code);
  });
}

bool Views::RestoreDeleted(const RestoreDeletedRequest&, RestoreDeletedResponse& response) {
  return Answer(response, [] { throw Refusal{Gone, "What is deleted here is gone for good."}; });
}

bool Views::GetPlanDetail(const GetPlanDetailRequest& request, GetPlanDetailResponse& response) {
  return Answer(response, [&] {
    if (request.query_kind == 1) {
      throw Refusal{Gone, "NoAutoRunPlan"};
    }
    const Row row = Existing(request.plan_index_code, "plan");
    response.index_code = request.plan_index_code;
    response.name = S(row["name"]);
    response.group_index_code = S(row["parent"]);
    response.group_name = ParentName(row);
    response.type = row["family"].toInt();
    response.auto_run = row["auto"].toBool();
    response.start_time = S(row["begin"]);
    response.end_time = S(row["end"]);
    response.pages = PagesOf(row);
    response.creator = "operator";
    response.creation_time = S(row["created"]);
    response.thumbnail = QByteArray::fromBase64(row["thumbnail"].toString().toLatin1()).toStdString();
    response.revision = row["revision"].toInt();
    response.changed_at = S(row["changed_at"]);
  });
}

bool Views::AddPlanLog(const AddPlanLogRequestParam& request, AddPlanLogResponseParam&) {
  marlog::Write("Plays", marlog::Info, "%s", request.name.c_str());
  return true;
}

bool Views::SearchPlan(const SearchPlanRequest& request, SearchPlanResponse& response) {
  return Answer(response, [&] {
    for (const auto& [code, row] : site->rows) {
      const bool is_found = row["name"].toString().contains(Q(request.text), Qt::CaseInsensitive);
      if (row["kind"] == "plan" && row["family"] == request.scope && !request.text.empty() && is_found) {
        response.plans.push_back(
            {code.toStdString(), S(row["name"]), S(row["parent"]), ParentName(row), row["family"].toInt()});
      }
    }
  });
}

bool Views::GetClientViewConfig(const GetClientDefaultViewConfigRequest&,
                                GetClientDefaultViewConfigResponse& response) {
  return Answer(response, [&] {
    const QJsonValue stored = site->settings["default_view"];
    if (site->rows.count(stored[0].toString()) != 0) {
      response.index_code = S(stored[0]);
      response.type = stored[1].toInt();
    }
  });
}

bool Views::SetClientViewConfig(const ClienDefaultViewConfigRequest& request, ClienDefaultViewConfigReponse& response) {
  return Answer(response, [&] { SetSetting("default_view", QJsonArray{Q(request.index_code), request.type}); });
}

bool Views::GetPlanConfig(const GetPlanConfigRequest&, GetPlanConfigResponse& response) {
  return Answer(response, [&] {
    response.show_mode = 1;
    response.create_under_root = site->settings["plans_under_root"].toBool();
  });
}

bool Views::GetCurrentUser(const GetCurrentUserRequest&, GetCurrentUserResponse& response) {
  return Answer(response, [&] { response.user = {1, "operator"}; });
}
bool Views::GetAllUserInfo(const UserRequestInfo&, UserResponseInfo& response) {
  return Answer(response, [&] { response.users = {{1, "operator"}}; });
}
bool Views::ViewShareUsers(const ViewShareResquestInfo&, ShareViewResponseInfo& response) {
  return Answer(response, [] { throw Refusal{Refused, "There is no other user."}; });
}

bool Views::IsInitViewGroupFinish(const ClienInitViewDataRequest&, ClienInitViewDataResponse& response) {
  return Answer(response, [] {});
}
bool Views::IsInitViewFinish(const ClienInitViewDataRequest&, ClienInitViewDataResponse& response) {
  return Answer(response, [] {});
}
bool Views::IsViewResourceDownFinish() {
  ResponseHeader unused;
  return Answer(unused, [] {});
}
void Views::ClearViewData() {}  // what is in memory is always up to date

void Views::ViewRegisterResourceUpdate(IResourceObserver* observer, const ViewObserverInfo& info) {
  if (info.index_code == "root") {
    root_observer = info.action == 1 ? observer : nullptr;
  }
}

bool CResourceBusinessInterfaceMgr::CheckControlPermission(int code) { return code >= 5 && code <= 7; }
bool CPreviewBusinessInterfaceMgr::GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest&,
                                                    play_plugin_protocol::GetStreamAbiResponse& response) {
  response.stream_types = {0, 1};
  return true;
}
bool CPTZBusinessInterfaceMgr::GetPresets(const ptz_plugin_protocol::GetPresetRequest&,
                                          ptz_plugin_protocol::GetPresetResponse&) {
  return true;  // none of the cameras turns
}

}  // namespace LyraPluginManager

std::shared_ptr<TarnConfiguration::IViewConfigInterface> TarnConfiguration::CreateViewConfigInterface() {
  struct Configuration : IViewConfigInterface {
    std::string GetStationId() const override { return PlainControls::Station(); }
  };
  return std::make_shared<Configuration>();
}

void marlog::Write(const char* module, int level, const char* format, ...) {
  if (level < Warning) {
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  std::fprintf(stderr, "%s: %s\n", module, qPrintable(QString::vasprintf(format, arguments)));
  va_end(arguments);
}
