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
#include "marlog/marlog.h"
#include "plans/plan_player.h"
#include "wall/live_wall.h"
#include "window/main_window.h"

namespace TarnClient {

namespace {

constexpr int kScreenshotDelayMs = 3000;
constexpr int kPoolEndMs = 500;  // for tasks whose calls have failed by then
constexpr int kCannotFollow = 2;

void Complain(const QString& line) {
  std::fprintf(stderr, "tarn-client: %s\n", qUtf8Printable(line));
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
  if (!store_->Close() || !QThreadPool::globalInstance()->waitForDone(kPoolEndMs)) {
    return false;
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
  if (!OpenStore(error) || !LogIn(error)) {
    if (!log_trouble.isEmpty()) {
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

bool CClientSession::OpenStore(QString* error) {
  TarnHost::PlanStoreOptions store;
  store.url = StoreUrlOf(options_);
  store.download_delay = std::chrono::milliseconds(options_.download_delay_ms);
  store.switch_overrides = options_.switches;
  store.first_content = options_.FillsWithDemo() ? &TarnHost::MakeDemoSite : &TarnHost::MakeEmptySite;
  store.on_trouble = [this](TarnHost::StoreTrouble trouble, const QString& line) {
    if (window_) {
      window_->ShowStoreTrouble(trouble, line);
    }
  };
  store_url_ = store.url;
  store_ = TarnHost::CPlanStore::Open(store, error);
  return store_ != nullptr;
}

bool CClientSession::LogIn(QString* error) {
  user_ = options_.user;
  if (user_.isEmpty()) {
    user_ = store_->DefaultUser();
  }
  TarnHost::InstallHostServices(store_);
  return store_->LogIn(user_, error);
}

void CClientSession::LoadSettings() {
  QString path;
  if (options_.UsesSettings()) {
    path = options_.settings_file;
    if (path.isEmpty()) {
      path = CUserSettings::UsualPath();
    }
  }
  settings_ = std::make_unique<CUserSettings>(path);
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
  setup.log_in = [this](const QString& name, QString* error) { return store_->LogIn(name, error); };
  window_ = std::make_unique<CMainWindow>(std::move(setup));
  connect(window_.get(), &CMainWindow::SignalUserSwitched, this, &CClientSession::OnUserSwitched);
  window_->show();
  if (!options_.scene.isEmpty()) {
    scene_ = std::make_unique<CScene>(options_.scene, window_.get(), store_url_);
  }
}

void CClientSession::OnPlansReady() {
  if (!begun_) {
    begun_ = true;
    BeginAtTheDesk();
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
  std::fprintf(stdout, "%s\n", MakeStateReport(window_->Wall()).constData());
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
