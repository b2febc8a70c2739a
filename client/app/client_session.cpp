#include "app/client_session.h"

#include <TarnPlanView/auto_plan_helper.h>
#include <TarnPlanView/plugin_shutdown.h>
#include <TarnPlanView/view_model_data_manager_export.h>

#include <QApplication>
#include <QFileInfo>
#include <QLocale>
#include <QPixmap>
#include <QThreadPool>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

#include "LyraPluginManager/preview_business_interface_mgr.h"
#include "LyraPluginManager/ptz_business_interface_mgr.h"
#include "LyraPluginManager/resource_business_interface_mgr.h"
#include "LyraPluginManager/view_business_interface_mgr.h"
#include "MarUIControl/string_conversion.h"
#include "TarnHost/log_sink.h"
#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"
#include "TarnUIDataController/message_tip_manager.h"
#include "TarnUIDataController/nomal_message_manager.h"
#include "TarnUIDataController/signal_transfer_manager.h"
#include "TarnUIDataController/skin_loader.h"
#include "app/data_file.h"
#include "app/grab_windows.h"
#include "app/scenes.h"
#include "app/state_report.h"
#include "host_calls/call_pool.h"
#include "log_in/last_name.h"
#include "log_in/log_in_dialog.h"
#include "log_in/log_in_pool.h"
#include "log_in/way_in.h"
#include "marlog/marlog.h"
#include "plans/plan_player.h"
#include "wall/live_wall.h"
#include "window/main_window.h"
#include "window/walls.h"

namespace TarnClient {

using TarnHost::LogInOutcome;
using Copy = TarnHost::StoreCopies::Copy;

namespace {

constexpr int kScreenshotDelayMs = 3000;
constexpr int kPoolEndMs = 500;  // for tasks whose calls have failed by then
constexpr int kCannotFollow = 2;
constexpr std::chrono::milliseconds kPatienceWithCopy{2000};  // with a server, where there is something else to show
constexpr char kPasswordNeeded[] = "a password is needed: name a --user, and give it by --password-fd or TARN_PASSWORD";

void Complain(const QString& line) {
  std::fprintf(stderr, "tarn-client: %s\n", qUtf8Printable(line));
}

QStringList UserNames(TarnHost::CPlanStore& store) {
  view_plugin_protocol::UserResponseInfo response;
  QStringList names;
  if (store.GetAllUserInfo({}, response)) {
    for (const view_plugin_protocol::UserInfo& user : response.users) {
      names << MarUIControl::StringToQString(user.name);
    }
  }
  return names;
}

void ReleaseHostSingletons() {
  tarn_ui_data_controller::CNomalMessageManager::Release();
  tarn_ui_data_controller::CMessageTipManager::Release();
  tarn_ui_data_controller::CSignalTransferManager::Release();
  tarn_ui_data_controller::CSkinLoader::Release();
  LyraPluginManager::CPreviewBusinessInterfaceMgr::Release();
  LyraPluginManager::CPTZBusinessInterfaceMgr::Release();
  LyraPluginManager::CResourceBusinessInterfaceMgr::Release();
  LyraPluginManager::CViewBusinessInterfaceMgr::Release();
}

}  // namespace

CClientSession::CClientSession(ClientOptions options, QObject* parent)
    : QObject(parent), options_(std::move(options)), loader_(nullptr) {
  connect(&loader_, &CPlanDataLoader::SignalReady, this, &CClientSession::OnPlansReady);
}

CClientSession::~CClientSession() {
  End();
}

bool CClientSession::End() {
  if (std::exchange(ended_, true)) {
    return true;
  }
  scene_.reset();
  window_.reset();
  const bool settings_are_safe = !settings_ || settings_->Flush();
  if (!settings_are_safe) {
    marlog::Write("LyraClientError", marlog::Error, "The settings have not been saved; the disk does not answer");
  }
  if (TarnPlanView::CViewModelDataManagerExport::IsCreated()) {
    TarnPlanView::CAutoPlanHelper::Instance().StopDetect();
    TarnPlanView::CViewModelDataManagerExport::Instance().UninitManager();
  }
  const bool in_order = EndStore();
  if (in_order) {
    ReleaseHostSingletons();
  } else {
    marlog::Write("LyraClientError", marlog::Error, "A call of the store has not ended; the client ends without it");
  }
  marlog::Write("LyraClientInfo", marlog::Info, "The client has ended");
  TarnHost::LogSink::Close();
  return in_order && settings_are_safe;
}

bool CClientSession::EndStore() {
  if (!store_) {
    return true;
  }
  TarnHost::InstallHostServices(nullptr);
  if (!store_->Close()) {
    return false;
  }
  for (QThreadPool* pool : {&HostCalls::CallPool(), &LogInPool()}) {
    if (!pool->waitForDone(kPoolEndMs)) {
      return false;
    }
  }
  TarnPlanView::ReleasePlugin();
  store_.reset();
  return true;
}

bool CClientSession::Start(QString* error) {
  const QString log_trouble = OpenLog();
  if (!log_trouble.isEmpty()) {
    TarnHost::LogSink::Close();  // its lines would go to stderr, where a refusal stands alone
  }
  if (!FindAccount(error) || !OpenStore(error) || !LogIn(error)) {
    if (!log_trouble.isEmpty() && !error->isEmpty()) {
      *error += QStringLiteral("; ") + log_trouble;
    }
    return false;
  }
  if (!log_trouble.isEmpty()) {
    Complain(log_trouble);
    OpenLog();
  }
  LoadSettings();
  LoadLanguage();
  LoadSkin();
  loader_.Prepare();
  ShowWindow();
  loader_.Load();
  if (options_.quit_after_seconds) {
    QTimer::singleShot(static_cast<int>(*options_.quit_after_seconds * 1000), this, &CClientSession::OnTimeIsUp);
  }
  return true;
}

QString CClientSession::OpenLog() {
  QString path = options_.log_file;
  if (path.isEmpty()) {
    path = DataFile("client.log");
  }
  if (!TarnHost::LogSink::OpenFile(path)) {
    return QStringLiteral("cannot write the log file %1").arg(path);
  }
  marlog::Write("LyraClientInfo", marlog::Info, "The client starts");
  return QString();
}

// An address of a server that names no user, where the server does not take the machine's own: it asks who it is.
bool CClientSession::FindAccount(QString* error) {
  OpenSettings();
  store_url_ = StoreUrlOf(options_);
  copies_ = CopiesFolderOf(options_);
  if (options_.keeps_no_copy) {
    TarnHost::StoreCopies::Remove(NamedCopiesFolder(options_), store_url_);
  }
  const bool has_copy = TarnHost::StoreCopies::HasAny(copies_, store_url_);
  const bool names_account = store_url_.contains('@');
  if (names_account && !has_copy) {
    return true;
  }
  const auto patience = has_copy ? kPatienceWithCopy : TarnHost::CPlanStore::kServerPatience;
  const LogInOutcome server = TarnHost::CPlanStore::AskServer(store_url_, {}, patience).outcome;
  if (has_copy && server == LogInOutcome::kUnavailable) {
    return ChooseCopy(error);
  }
  if (names_account || server != LogInOutcome::kWrongPassword) {
    return true;
  }
  const bool is_given = !options_.user.isEmpty() && options_.password;
  if (!is_given && IsUnattended()) {
    *error = QString::fromLatin1(kPasswordNeeded);
    return false;
  }
  if (!is_given && !AskForAccount()) {
    return false;
  }
  options_.log_in = options_.log_in && is_given;  // once is enough
  account_ = {options_.user, *options_.password};
  return true;
}

// One that cannot be used is as good as none: then opening the store says why there is nothing to show.
bool CClientSession::ChooseCopy(QString* error) {
  const std::vector<Copy> copies = TarnHost::StoreCopies::Of(copies_, store_url_, &copy_trouble_);
  const auto named =
      std::find_if(copies.begin(), copies.end(), [this](const Copy& copy) { return copy.user == options_.user; });
  const bool is_user_named = !options_.user.isEmpty();
  if (copies.empty() || (is_user_named && named == copies.end())) {
    return true;
  }
  const Copy& likely = is_user_named ? *named : copies.front();
  StartSituation start;
  start.is_forced = options_.log_in;
  start.is_user_named = is_user_named;
  start.has_password = likely.has_password;
  start.is_password_given = options_.password.has_value();
  start.is_store_asking = copies.size() > 1;
  start.is_unattended = IsUnattended();
  switch (WayOf(start)) {
    case WayIn::Straight:
      copy_of_ = options_.user = likely.user;
      return true;
    case WayIn::Ask:
      return AskAtCopy(copies);
    case WayIn::Refuse:
      *error = QString::fromLatin1(kPasswordNeeded);
      break;
  }
  return false;
}

bool CClientSession::AskAtCopy(const std::vector<Copy>& copies) {
  LoadLanguage();
  LoadSkin();
  CLogInDialog::Setup setup = UsualQuestion();
  QDateTime at = copies.front().at;
  for (const Copy& copy : copies) {
    if (copy.user == setup.user) {
      at = copy.at;
    }
    if (!copy.has_password) {
      setup.without_password.append(copy.user);
    }
  }
  setup.note = CLogInDialog::NoteOnCopy(at);
  setup.log_in = [folder = copies_, url = store_url_](const TarnHost::LogInRequest& request,
                                                      const TarnHost::LogInSteps&) {
    return TarnHost::StoreCopies::Check(folder, url, request);
  };
  if (!Ask(std::move(setup))) {
    return false;
  }
  options_.log_in = false;
  copy_of_ = user_;
  return true;
}

bool CClientSession::AskForAccount() {
  LoadLanguage();
  LoadSkin();
  CLogInDialog::Setup setup = UsualQuestion();
  setup.log_in = [url = store_url_](const TarnHost::LogInRequest& request, const TarnHost::LogInSteps&) {
    return TarnHost::CPlanStore::AskServer(url, request);
  };
  return Ask(std::move(setup));
}

bool CClientSession::OpenStore(QString* error) {
  TarnHost::PlanStoreOptions store;
  store.url = store_url_;
  store.account = account_;
  store.copies = copies_;
  store.shows_of = copy_of_;
  store.download_delay = std::chrono::milliseconds(options_.download_delay_ms);
  store.switch_overrides = options_.switches;
  store.cameras_at = options_.cameras_at;
  store.devices_at = options_.devices_at;
  store.first_content = options_.FillsWithDemo() ? &TarnHost::MakeDemoSite : &TarnHost::MakeEmptySite;
  store.on_trouble = [this](TarnHost::StoreTrouble trouble, const QString& line) {
    trouble_ = {trouble, line};
    ShowTrouble();
  };
  store.on_password_asked = [this] {
    asks_for_password_ = true;
    ShowTrouble();
  };
  store.on_users = [this] {
    if (window_) {
      window_->OnUsersChanged();
    }
  };
  store_ = TarnHost::CPlanStore::Open(store, error);
  account_ = {};
  if (!store_ && !copy_trouble_.isEmpty()) {
    *error += ' ' + copy_trouble_;
  }
  return store_ != nullptr;
}

void CClientSession::ShowTrouble() {
  if (!window_) {
    return;
  }
  window_->ShowStoreTrouble(trouble_.first, trouble_.second, store_->CopyMoment());
  if (std::exchange(asks_for_password_, false)) {
    window_->AskForPassword();
  }
}

bool CClientSession::LogIn(QString* error) {
  user_ = options_.user;
  if (user_.isEmpty()) {
    user_ = store_->DefaultUser();
  }
  TarnHost::InstallHostServices(store_);
  StartSituation start;
  start.is_forced = options_.log_in;
  start.is_user_named = !options_.user.isEmpty();
  start.has_password = store_->HasPassword(user_);
  start.is_password_given = options_.password.has_value();
  start.is_store_asking = store_->AsksForPasswords();
  start.is_unattended = IsUnattended();
  switch (WayOf(start)) {
    case WayIn::Straight:
      return LogInStraight(error);
    case WayIn::Ask:
      return AskWhoItIs();
    case WayIn::Refuse:
      *error = QString::fromLatin1(kPasswordNeeded);
      break;
  }
  return false;
}

bool CClientSession::LogInStraight(QString* error) {
  const TarnHost::LogInRequest request{user_, options_.password.value_or(TarnHost::CSecret())};
  options_.password.reset();
  const TarnHost::LogInAnswer answer = store_->LogIn(request);
  *error = answer.line;
  return answer.IsDone();
}

LogInCalls CClientSession::HowToLogIn() const {
  const std::weak_ptr<TarnHost::CPlanStore> store = store_;
  LogInCalls calls;
  calls.log_in = [store](const TarnHost::LogInRequest& request, const TarnHost::LogInSteps& steps) {
    const auto open = store.lock();
    return open ? open->LogIn(request, steps) : TarnHost::LogInAnswer();
  };
  calls.check_password = [store](const TarnHost::LogInRequest& request) {
    const auto open = store.lock();
    return open ? open->CheckPassword(request) : TarnHost::LogInAnswer();
  };
  calls.has_password = [store](const QString& user) {
    const auto open = store.lock();
    return open && open->HasPassword(user);
  };
  return calls;
}

bool CClientSession::IsUnattended() const {
  return !options_.screenshot.isEmpty() || options_.quit_after_seconds;
}

bool CClientSession::AskWhoItIs() {
  options_.password.reset();
  LoadLanguage();
  LoadSkin();
  CLogInDialog::Setup setup = UsualQuestion();
  if (!store_->AsksForPasswords()) {
    setup.without_password = UserNames(*store_);
  }
  setup.log_in = HowToLogIn().log_in;
  const bool is_answered = Ask(std::move(setup));
  options_.password.reset();
  return is_answered;
}

CLogInDialog::Setup CClientSession::UsualQuestion() const {
  LastName last(settings_path_, store_url_);
  CLogInDialog::Setup setup;
  setup.title = CLogInDialog::tr("Log in");
  setup.confirm_text = setup.title;
  setup.user = options_.user;
  if (setup.user.isEmpty()) {
    setup.user = last.Name();
  }
  setup.remembers = !last.Name().isEmpty();
  setup.may_remember = last.CanBeKept();
  return setup;
}

bool CClientSession::Ask(CLogInDialog::Setup setup) {
  CLogInDialog dialog(std::move(setup), nullptr);
  connect(&dialog, &CLogInDialog::SignalLoggedIn, this, [this](const TarnHost::LogInRequest& request) {
    options_.user = request.user;
    options_.password = request.password;
  });
  if (dialog.exec() != QDialog::Accepted) {
    return false;
  }
  user_ = dialog.User();
  LastName(settings_path_, store_url_).Keep(dialog.Remembers() ? user_ : QString());
  return true;
}

void CClientSession::OpenSettings() {
  if (options_.UsesSettings()) {
    settings_path_ = options_.settings_file;
    if (settings_path_.isEmpty()) {
      settings_path_ = CUserSettings::UsualPath();
    }
  }
  settings_ = std::make_unique<CUserSettings>(settings_path_);
}

void CClientSession::LoadSettings() {
  settings_->Load(MarUIControl::StringToQString(store_->StationId()), user_);
  connect(settings_.get(), &CUserSettings::SignalSkinChosen, this,
          [this] { options_.skin.clear(); });  // what the user has said since then counts
  connect(settings_.get(), &CUserSettings::SignalChosen, this, &CClientSession::LoadSkin);
}

void CClientSession::LoadSkin() {
  auto& loader = tarn_ui_data_controller::CSkinLoader::Instance();
  const QString skin = options_.SkinFor(settings_->Chosen().skin);
  if (!window_ || loader.GetCurrentSkin() != skin) {
    loader.LoadSkin(skin);
  }
}

void CClientSession::LoadLanguage() {
  const QString language = options_.LanguageFor(settings_->Chosen().language);
  QLocale::setDefault(QLocale(language));
  const QString file = QStringLiteral(":/TarnClient/translations/tarn_%1.qm").arg(language);
  translator_.TakeWording();
  if (translator_.load(file)) {
    QCoreApplication::installTranslator(&translator_);
  } else {
    marlog::Write("LyraClientError", marlog::Error, "No texts for language %s", qUtf8Printable(language));
  }
}

void CClientSession::ShowWindow() {
  CMainWindow::Setup setup;
  setup.user = user_;
  setup.store_url = store_url_;
  setup.station_id = MarUIControl::StringToQString(store_->StationId());
  setup.settings = settings_.get();
  setup.is_owners_desk = store_url_.startsWith(QLatin1String("postgresql:")) && !store_->KeepsRights();
  setup.log_in = HowToLogIn();
  window_ = std::make_unique<CMainWindow>(std::move(setup));
  connect(window_.get(), &CMainWindow::SignalUserSwitched, this, &CClientSession::OnUserSwitched);
  ShowTrouble();
  window_->OnUsersChanged();
  window_->show();
  window_->OpenLeftWalls();
  if (!options_.scene.isEmpty()) {
    scene_ = std::make_unique<CScene>(options_.scene, window_.get(), store_url_);
  }
}

void CClientSession::OnPlansReady() {
  const bool is_new_user = std::exchange(is_new_user_, false);
  if (!begun_) {
    begun_ = true;
    BeginAtTheDesk();
  } else if (is_new_user) {
    window_->OpenFirst();
  }
  TarnPlanView::CAutoPlanHelper::Instance().StartDetectAutoRunPlan();
}

void CClientSession::BeginAtTheDesk() {
  if (!options_.play.isEmpty()) {
    PlayNamedPlan();
  } else if (!scene_) {
    window_->OpenFirst();  // a scene plays what it shows, and nothing comes in between
  }
  if (!options_.screenshot.isEmpty() && !options_.quit_after_seconds) {
    QTimer::singleShot(kScreenshotDelayMs, this, [this] { SaveScreenshot(); });
  }
}

// Until the plans of the new user are there no automatic plan is looked for: it would still be the old user's.
void CClientSession::OnUserSwitched() {
  LoadSkin();
  TarnPlanView::CAutoPlanHelper::Instance().StopDetect();
  is_new_user_ = true;
}

// Names are looked up when the plans are there, not at the start: before that every name would be unknown.
void CClientSession::PlayNamedPlan() {
  const std::string code = store_->FindPlanByName(options_.play);
  if (code.empty()) {
    Complain(QStringLiteral("there is no plan \"%1\" that this user can see").arg(options_.play));
    QCoreApplication::exit(kCannotFollow);
    return;
  }
  window_->PlayPlan(code);
}

void CClientSession::OnTimeIsUp() {
  const bool saved = options_.screenshot.isEmpty() || SaveScreenshot();
  std::fprintf(stdout, "%s\n", MakeStateReport(window_->Walls().Desks()).constData());
  std::fflush(stdout);
  QCoreApplication::exit(saved ? EXIT_SUCCESS : EXIT_FAILURE);
}

bool CClientSession::SaveScreenshot() {
  if (GrabWindows(*window_).save(options_.screenshot)) {
    return true;
  }
  Complain(QStringLiteral("cannot write the picture %1").arg(options_.screenshot));
  return false;
}

}  // namespace TarnClient
