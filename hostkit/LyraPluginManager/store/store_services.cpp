#include "store/store_services.h"

#include <QThread>
#include <algorithm>
#include <optional>
#include <utility>

#include "store/call_answer.h"
#include "store/store_opener.h"
#include "store/store_texts.h"
#include "store/text_rules.h"
#include "store/tree_events.h"

namespace TarnHost::Store {
namespace {

using std::chrono::steady_clock;
namespace view = view_plugin_protocol;

constexpr auto kBeat = std::chrono::milliseconds(200);
// Between two attempts to connect again: a server logs each that it refuses.
constexpr auto kBetweenAttempts = std::chrono::seconds(1);
// At its end a store waits so long for what its threads do, then, having cut the connections, for the threads. Who
// closes it has 3 s for all that he has to do.
constexpr std::chrono::milliseconds kNoTime(0), kOrderlyEnd(1200), kEndAfterCut(800);
const char kRoot[] = "root";
const char kNoDefaultView[] = "-3";
const char kNoAutomaticPlan[] = "NoAutoRunPlan";

template <class Ability>
Ability Existing(std::optional<Ability> of_camera) {
  if (!of_camera) {
    throw CStoreError(CStoreError::kGone, kNoCamera);
  }
  return std::move(*of_camera);
}

}  // namespace

CStoreServices::CStoreServices(PlanStoreOptions options)
    : options_(std::move(options)),
      hub_(new CObserverHub),
      answering_(std::make_shared<CAnswering>()),
      watch_(std::make_shared<CConnectionWatch>()),
      troubles_(answering_, [this](StoreTrouble trouble, const QString& line) { Report(trouble, line); }),
      thread_(answering_) {}

// Opening has limits of its own: the engines' and those of the watch.
void CStoreServices::Start() {
  answering_->SetNews([weak = weak_from_this()] {
    if (const auto self = weak.lock()) {
      self->troubles_.OnAnswering();
    }
  });
  thread_.Call([self = shared_from_this()] { self->OpenDatabase(); }, CDatabaseThread::kUntilDone);
  ClearViewData();
}

void CStoreServices::OpenDatabase() {
  engine_ = OpenStore(options_.url, {options_.first_content, options_.now()}, watch_);
  if (HasReaders(options_.url)) {
    const auto open = [url = options_.url, files = engine_->Files()](auto watch) {
      return OpenReader(url, std::move(watch), files);
    };
    reader_ = std::make_unique<CPlanReader>(open, answering_);
  }
  site_ = CSiteDirectory::Read(*engine_, options_.switch_overrides);
  session_ = std::make_unique<CStoreSession>(
      *engine_, catalog_, user_, *hub_, [this] { return thread_.Claim(); }, closed_);
  writer_ = std::make_unique<CPlanWriter>(*session_, site_, options_.now);
  thread_.SetBeat(kBeat, [weak = weak_from_this()] {
    const auto self = weak.lock();
    return self && self->Beat();
  });
}

void CStoreServices::CloseDatabase() {
  writer_.reset();
  session_.reset();
  engine_.reset();
}

// A second call, as by the last owner's end, does not wait again for what was left behind.
bool CStoreServices::Close() {
  std::call_once(close_once_, [this] { closed_in_order_ = EndThreads(); });
  return closed_in_order_;
}

bool CStoreServices::EndThreads() {
  closed_ = true;
  hub_->Close();
  thread_.BeginStop([self = shared_from_this()] { self->CloseDatabase(); });
  if (reader_) {
    reader_->BeginStop();
  }
  const auto now = steady_clock::now();
  const auto in_order = now + (answering_->IsLost() ? kNoTime : kOrderlyEnd);
  if (WaitUntilEnded(in_order)) {
    return true;
  }
  watch_->Cut();
  if (reader_) {
    reader_->Cut();
  }
  if (WaitUntilEnded(in_order + kEndAfterCut)) {
    return true;
  }
  thread_.LeaveBehind();
  if (reader_) {
    reader_->Thread().LeaveBehind();
  }
  return false;
}

bool CStoreServices::WaitUntilEnded(steady_clock::time_point deadline) {
  const bool reader_ended = !reader_ || reader_->Thread().WaitUntilEnded(deadline);
  return thread_.WaitUntilEnded(deadline) && reader_ended;
}

// Answers whether the database did.
bool CStoreServices::Beat() {
  if (connection_lost_ && steady_clock::now() < next_attempt_) {
    return false;
  }
  std::optional<CStoreError> trouble;
  try {
    Reconnect();
    DownloadWhenWanted();
    session_->Poll();
    LookAgainAtPlans();
    RequireWritable();
  } catch (const CStoreError& error) {
    trouble = error;
    connection_lost_ = connection_lost_ || error.GetKind() == CStoreError::kConnectionLost;
  } catch (const std::exception& error) {
    trouble = Unforeseen(error);
  }
  troubles_.OnLook(trouble);
  return !connection_lost_;
}

// Else the user learns of it when he has made a change.
void CStoreServices::RequireWritable() const {
  const CStoreText refusal = engine_->WriteRefusal();
  if (!refusal.IsEmpty()) {
    throw CStoreError(CStoreError::kReadOnly, refusal);
  }
}

void CStoreServices::Report(StoreTrouble trouble, const QString& line) {
  if (options_.on_trouble) {
    const auto report = [weak = weak_from_this(), trouble, line] {
      const auto self = weak.lock();
      if (self && !self->closed_) {
        self->options_.on_trouble(trouble, line);
      }
    };
    QMetaObject::invokeMethod(hub_.get(), report, Qt::QueuedConnection);
  }
}

/// Runs work(writer) on the database thread. It must refer to nothing of its caller's.
template <class Work>
auto CStoreServices::Write(Work work) {
  return thread_.Call([self = shared_from_this(), work] {
    try {
      if constexpr (std::is_void_v<decltype(work(*self->writer_))>) {
        work(*self->writer_);
        self->troubles_.OnChange({});
      } else {
        auto result = work(*self->writer_);
        self->troubles_.OnChange({});
        return result;
      }
    } catch (const CStoreError& refusal) {
      self->troubles_.OnChange(refusal);
      throw;
    }
  });
}

/// Runs work(repository) there, for stores that have no reader.
template <class Work>
auto CStoreServices::Read(Work work) {
  return thread_.Call([self = shared_from_this(), work] { return work(self->session_->Repository()); });
}

void CStoreServices::Reconnect() {
  if (connection_lost_) {
    next_attempt_ = steady_clock::now() + kBetweenAttempts;
    if (reader_ && options_.url.startsWith("sqlite:")) {
      reader_->Release();
    }
    session_->Reconnect();
    connection_lost_ = false;
  }
}

void CStoreServices::DownloadWhenWanted() {
  const int wanted = downloads_wanted_;
  if (download_done_ != wanted) {
    session_->DropCatalog();
    session_->LoadCatalog();
    download_done_ = wanted;
  }
}

void CStoreServices::ClearViewData() {
  download_end_ = (steady_clock::now() + options_.download_delay).time_since_epoch().count();
  ++downloads_wanted_;
  thread_.Post([self = shared_from_this()] { return self->Beat(); });
}

bool CStoreServices::IsDownloaded() const {
  const int wanted = downloads_wanted_;
  if (download_ready_ == wanted) {
    return !closed_;  // asked with every read, so without looking at the clock
  }
  if (download_done_ != wanted || steady_clock::now().time_since_epoch().count() < download_end_) {
    return false;
  }
  download_ready_ = wanted;
  return !closed_;
}

bool CStoreServices::LogIn(const QString& user, QString* error) {
  const CSiteDirectory::User* found = site_.FindUser(user.toStdString());
  if (found == nullptr) {
    *error = CStoreText(QT_TRANSLATE_NOOP("TarnHost::Store", "There is no user \"%1\"."), {user}).Shown();
    return false;
  }
  user_ = found->id;
  // Who registers after the log-in reads as this user anyway and has no reason to load twice.
  const auto event = WholeTreeEvent();
  if (hub_->IsObserved(event.key)) {
    hub_->Post({event});
  }
  return true;
}

QString CStoreServices::DefaultUser() const {
  const auto& users = site_.Users();
  const auto all_rights = [](const CSiteDirectory::User& user) {
    return user.rights.count(5) != 0 && user.rights.count(6) != 0 && user.rights.count(7) != 0;
  };
  const auto found = std::find_if(users.begin(), users.end(), all_rights);
  if (found != users.end()) {
    return ToQt(found->name);
  }
  return users.empty() ? QString() : ToQt(users.front().name);
}

std::string CStoreServices::FindPlanByName(const QString& name) const {
  const int32_t code = catalog_.FindByName(name.toStdString(), user_);
  return code == 0 ? std::string() : std::to_string(code);
}

void CStoreServices::RequireOpen() const {
  if (closed_) {
    throw CStoreError(CStoreError::kClosed, kStoreClosed);
  }
}

int32_t CStoreServices::RequireUser() const {
  RequireOpen();
  const int32_t user = user_;
  if (user == 0) {
    throw CStoreError(CStoreError::kNotPermitted, kNobodyLoggedIn);
  }
  return user;
}

void CStoreServices::RequireDownloaded() const {
  RequireOpen();
  if (!IsDownloaded()) {
    throw CStoreError(CStoreError::kNotAnswering,
                      QT_TRANSLATE_NOOP("TarnHost::Store", "The plans have not been downloaded yet."));
  }
}

bool CStoreServices::GetPlanGroups(const view::GetPlanGroupsRequest& request, view::GetPlanGroupsResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    RequireDownloaded();
    if (request.parent_index_code == kRoot) {
      response.groups.append({site_.RootName(), {}, kRoot, kPublic});
      return;
    }
    const auto take = [&](const std::vector<GroupRow>& rows) {
      response.groups.reserve(static_cast<int>(rows.size()));
      for (const GroupRow& row : rows) {
        response.groups.append(view::PlanGroup());
        view::PlanGroup& group = response.groups.last();
        group.name = row.name;
        group.parent_index_code = request.parent_index_code;
        group.index_code = std::to_string(row.code);
        group.type = row.family;
      }
    };
    if (!catalog_.VisitGroups(ParseCode(request.parent_index_code), user, take)) {
      throw CStoreError(CStoreError::kGone, kGroupGone);
    }
  });
}

bool CStoreServices::GetPlansInGroup(const view::GetPlansInGroupRequest& request,
                                     view::GetPlansInGroupResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    RequireDownloaded();
    const auto take = [&](const std::vector<PlanRow>& rows) {
      response.plans.reserve(static_cast<int>(rows.size()));
      for (const PlanRow& row : rows) {
        response.plans.append(view::PlanBasicInfo());
        view::PlanBasicInfo& plan = response.plans.last();
        plan.index_code = std::to_string(row.code);
        plan.name = row.name;
        plan.group_index_code = request.group_index_code;
        plan.type = row.family;
        plan.split_type = row.split_type;
        plan.page_count = row.page_count;
        plan.auto_run = row.auto_run;
      }
    };
    if (!catalog_.VisitPlans(ParseCode(request.group_index_code), user, take)) {
      throw CStoreError(CStoreError::kGone, kGroupGone);
    }
  });
}

bool CStoreServices::AddPlanGroup(const view::AddPlanGroupRequest& request, view::AddPlanGroupResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    response.index_code = std::to_string(Write([=](CPlanWriter& writer) { return writer.AddGroup(request, user); }));
  });
}

bool CStoreServices::UpdatePlanGroup(const view::UpdatePlanGroupRequest& request,
                                     view::UpdatePlanGroupResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.RenameGroup(request, user); });
  });
}

bool CStoreServices::DeletePlanGroup(const view::DeletePlanGroupRequest& request,
                                     view::DeletePlanGroupResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.DeleteGroup(request.index_code, user); });
  });
}

bool CStoreServices::AddPlan(const view::AddPlanRequest& request, view::AddPlanResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    response.index_code = std::to_string(Write([=](CPlanWriter& writer) { return writer.AddPlan(request, user); }));
  });
}

bool CStoreServices::UpdatePlan(const view::UpdatePlanRequest& request, view::UpdatePlanResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.UpdatePlan(request, user); });
  });
}

bool CStoreServices::DeletePlan(const view::DeletePlanResquest& request, view::DeletePlanResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.DeletePlan(request.plan_index_code, user); });
  });
}

int32_t CStoreServices::AutomaticPlan() const {
  const int32_t second = options_.now().time().msecsSinceStartOfDay() / 1000;
  const int32_t code = catalog_.AutomaticPlan(second, user_);
  if (code == 0) {
    throw CStoreError(CStoreError::kGone, QString(kNoAutomaticPlan));
  }
  return code;
}

StoredPlan CStoreServices::ReadPlan(int32_t code, int32_t user) {
  auto plan = reader_ ? reader_->WholePlan(code)
                      : Read([code](CPlanRepository& repository) { return repository.WholePlan(code); });
  if (!plan || (plan->row.family == kOwn && plan->row.owner != user)) {
    throw CStoreError(CStoreError::kGone, kPlanGone);
  }
  if (!plan->damage.IsEmpty()) {
    throw CStoreError(CStoreError::kDamaged, plan->damage);
  }
  return std::move(*plan);
}

// A tree that reads a plan because it has changed does not ask a second time by itself.
StoredPlan CStoreServices::ReadPlanForTree(int32_t code, int32_t user) {
  try {
    return ReadPlan(code, user);
  } catch (const CStoreError& error) {
    const bool is_lost =
        error.GetKind() == CStoreError::kNotAnswering || error.GetKind() == CStoreError::kConnectionLost;
    if (is_lost && hub_->thread() == QThread::currentThread()) {
      const std::lock_guard<std::mutex> lock(unread_mutex_);
      unread_plans_.insert(code);
    }
    throw;
  }
}

// With every beat, not at the end of a trouble: a plan may be noted just after that.
void CStoreServices::LookAgainAtPlans() {
  if (answering_->IsLost() || steady_clock::now() < next_look_) {
    return;
  }
  std::set<int32_t> codes;
  {
    const std::lock_guard<std::mutex> lock(unread_mutex_);
    codes.swap(unread_plans_);
  }
  if (!codes.empty()) {
    next_look_ = steady_clock::now() + kBetweenAttempts;
  }
  for (const int32_t code : codes) {
    if (const auto hit = catalog_.FindPlan(code, user_)) {
      const std::optional<PlanRow> row = hit->plan;
      hub_->Post(EventsOf(row, row, user_));
    }
  }
}

std::string CStoreServices::ParentName(int32_t parent, int32_t user) const {
  const auto group = catalog_.FindGroup(parent, user);
  return group ? group->name : site_.RootName();
}

bool CStoreServices::GetPlanDetail(const view::GetPlanDetailRequest& request, view::GetPlanDetailResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    RequireDownloaded();
    const bool automatic = request.query_kind == 1;
    StoredPlan plan = ReadPlanForTree(automatic ? AutomaticPlan() : ParseCode(request.plan_index_code), user);
    response.index_code = std::to_string(plan.row.code);
    response.name = plan.row.name;
    response.group_index_code = std::to_string(plan.row.parent);
    response.group_name = ParentName(plan.row.parent, user);
    response.type = plan.row.family;
    response.auto_run = plan.row.auto_run;
    response.start_time = plan.begin_time.toStdString();
    response.end_time = plan.end_time.toStdString();
    response.pages = std::move(plan.pages);
    response.creator = plan.creator.toStdString();
    response.creation_time = plan.creation_time.toStdString();
    response.thumbnail = plan.thumbnail.toStdString();
    response.revision = plan.revision;
  });
}

bool CStoreServices::AddPlanLog(const view::AddPlanLogRequestParam& request, view::AddPlanLogResponseParam& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.LogPlay(request, user); });
  });
}

bool CStoreServices::SearchPlan(const view::SearchPlanRequest& request, view::SearchPlanResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    RequireDownloaded();
    const std::string folded = Folded(ToQt(request.text));
    if (folded.empty()) {
      return;
    }
    for (CPlanCatalog::Hit& hit : catalog_.Search(folded, request.scope == 1 ? kOwn : kPublic, user)) {
      const bool under_root = IsRootCode(hit.plan.parent);
      response.plans.push_back({std::to_string(hit.plan.code), std::move(hit.plan.name),
                                std::to_string(hit.plan.parent),
                                under_root ? site_.RootName() : std::move(hit.parent_name), hit.plan.family});
    }
  });
}

// What became invisible, for instance a plan that its owner took back from the public ones, is no default view.
bool CStoreServices::IsVisible(int32_t code, int32_t user) const {
  return catalog_.FindPlan(code, user) || catalog_.FindGroup(code, user);
}

bool CStoreServices::GetClientViewConfig(const view::GetClientDefaultViewConfigRequest&,
                                         view::GetClientDefaultViewConfigResponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    RequireDownloaded();
    const std::pair<int32_t, int32_t> found =
        reader_ ? reader_->DefaultView(user)
                : Read([user](CPlanRepository& repository) { return repository.DefaultView(user); });
    const bool there = IsVisible(found.first, user);
    response.index_code = there ? std::to_string(found.first) : kNoDefaultView;
    response.type = there ? found.second : 0;
  });
}

bool CStoreServices::SetClientViewConfig(const view::ClienDefaultViewConfigRequest& request,
                                         view::ClienDefaultViewConfigReponse& response) {
  return AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.SetDefaultView(request, user); });
  });
}

bool CStoreServices::GetPlanConfig(const view::GetPlanConfigRequest&, view::GetPlanConfigResponse& response) {
  return AnswerCall(&response, [&] {
    RequireOpen();
    response = site_.Config();
  });
}

bool CStoreServices::GetCurrentUser(const view::GetCurrentUserRequest&, view::GetCurrentUserResponse& response) {
  return AnswerCall(&response, [&] {
    const CSiteDirectory::User* user = site_.FindUser(RequireUser());
    response.user = {user->id, user->name};
  });
}

bool CStoreServices::GetAllUserInfo(const view::UserRequestInfo&, view::UserResponseInfo& response) {
  return AnswerCall(&response, [&] {
    RequireOpen();
    for (const CSiteDirectory::User& user : site_.Users()) {
      response.users.push_back({user.id, user.name});
    }
  });
}

bool CStoreServices::ViewShareUsers(const view::ViewShareResquestInfo& request, view::ShareViewResponseInfo& response) {
  const bool shared = AnswerCall(&response, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.Share(request, user); });
  });
  response.error_model = response.error_code = shared ? 0 : 1;
  return shared;
}

bool CStoreServices::IsInitViewGroupFinish(const view::ClienInitViewDataRequest&,
                                           view::ClienInitViewDataResponse& response) {
  return AnswerCall(&response, [this] { RequireDownloaded(); });
}

bool CStoreServices::IsInitViewFinish(const view::ClienInitViewDataRequest&,
                                      view::ClienInitViewDataResponse& response) {
  return AnswerCall(&response, [this] { RequireDownloaded(); });
}

bool CStoreServices::IsViewResourceDownFinish() {
  return IsDownloaded();
}

void CStoreServices::ViewRegisterResourceUpdate(ResourceData::IResourceObserver* observer,
                                                const view::ViewObserverInfo& info) {
  const CObserverHub::Key key(info.resource_type, info.index_code);
  if (info.action == 0) {
    hub_->Unregister(observer, key);
    return;
  }
  hub_->Register(observer, key);
  if (site_.Config().load_all && info.resource_type == ResourceData::RT_VIEW_GROUP && info.index_code != kRoot) {
    PostChildrenOf(info.index_code);
  }
}

// With everything loaded at the start a tree learns of a group's content only from notices.
void CStoreServices::PostChildrenOf(const std::string& group_code) {
  const int32_t group = ParseCode(group_code);
  const auto [first_group, first_plan] = catalog_.FirstChildren(group, user_);
  std::vector<CObserverHub::Event> events;
  if (first_group != 0) {
    events.push_back(ChildEvent(group, ResourceData::RE_CHILD_ADDED, first_group, ResourceData::RT_VIEW_GROUP));
  }
  if (first_plan != 0) {
    events.push_back(ChildEvent(group, ResourceData::RE_CHILD_ADDED, first_plan, ResourceData::RT_VIEW));
  }
  hub_->Post(std::move(events));
}

bool CStoreServices::CheckControlPermission(int code) {
  const CSiteDirectory::User* user = closed_ ? nullptr : site_.FindUser(user_);
  return user != nullptr && user->rights.count(code) != 0;
}

bool CStoreServices::GetPresets(const ptz_plugin_protocol::GetPresetRequest& request,
                                ptz_plugin_protocol::GetPresetResponse& response) {
  return AnswerCall(&response, [&] {
    RequireOpen();
    const int32_t camera = ParseCode(request.camera_index_code);
    response.presets =
        Existing(reader_ ? reader_->Presets(camera)
                         : Read([camera](CPlanRepository& repository) { return repository.Presets(camera); }));
  });
}

bool CStoreServices::GetStreamAbility(const play_plugin_protocol::GetStreamAbiRequest& request,
                                      play_plugin_protocol::GetStreamAbiResponse& response) {
  return AnswerCall(&response, [&] {
    RequireOpen();
    const int32_t camera = ParseCode(request.camera_index_code);
    response.stream_types =
        Existing(reader_ ? reader_->StreamTypes(camera)
                         : Read([camera](CPlanRepository& repository) { return repository.StreamTypes(camera); }));
  });
}

bool CStoreServices::GetCameraTree(std::vector<ResourceTreeKit::CRegionItemInfo>& regions,
                                   std::vector<ResourceTreeKit::CCameraItemInfo>& cameras, std::string* error) {
  return AnswerCall(error, [&] {
    RequireOpen();
    CameraList list =
        reader_ ? reader_->Cameras() : Read([](CPlanRepository& repository) { return repository.Cameras(); });
    regions = std::move(list.regions);
    cameras = std::move(list.cameras);
  });
}

bool CStoreServices::GetFavoriteCameras(std::vector<std::string>& index_codes, std::string* error) {
  return AnswerCall(error, [&] {
    const int32_t user = RequireUser();
    index_codes = reader_ ? reader_->FavoriteCameras(user)
                          : Read([user](CPlanRepository& repository) { return repository.FavoriteCameras(user); });
  });
}

bool CStoreServices::SetFavoriteCamera(const std::string& index_code, bool favorite, std::string* error) {
  return AnswerCall(error, [&] {
    const int32_t user = RequireUser();
    Write([=](CPlanWriter& writer) { writer.SetFavoriteCamera(index_code, favorite, user); });
  });
}

}  // namespace TarnHost::Store
