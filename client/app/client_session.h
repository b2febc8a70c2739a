#pragma once

#include <QObject>
#include <memory>
#include <utility>
#include <vector>

#include "TarnHost/store_copies.h"
#include "app/client_options.h"
#include "app/client_translator.h"
#include "app/plan_data_loader.h"
#include "log_in/log_in_dialog.h"
#include "settings/user_settings.h"

namespace TarnHost {
class CPlanStore;
enum class StoreTrouble;
}  // namespace TarnHost

namespace TarnClient {

class CMainWindow;
class CScene;

/// One run of the client, from the opened store to the orderly end. Thread: GUI.
class CClientSession : public QObject {
  Q_OBJECT
 public:
  explicit CClientSession(ClientOptions options, QObject* parent = nullptr);
  ~CClientSession() override;

  /// Opens the store, logs in, shows the window and starts loading. False with one line in `error`.
  bool Start(QString* error);
  /// Takes everything down in the order in which nothing is used after its end, within a few seconds. False when
  /// something still runs that cannot be ended: then nothing more may be destroyed. Once or more.
  bool End();

 private:
  /// As whom the store is opened, where its server has to be given an account.
  bool FindAccount(QString* error);
  /// Whose copy is shown while the server does not answer.
  bool ChooseCopy(QString* error);
  bool AskAtCopy(const std::vector<TarnHost::StoreCopies::Copy>& copies);
  bool OpenStore(QString* error);
  bool LogIn(QString* error);
  bool LogInStraight(QString* error);
  /// False when the user wants to leave instead; then without an error.
  bool AskWhoItIs();
  bool AskForAccount();
  CLogInDialog::Setup UsualQuestion() const;
  bool Ask(CLogInDialog::Setup setup);
  bool IsUnattended() const;
  /// What is wrong with the log, as one line.
  QString OpenLog();
  LogInCalls HowToLogIn() const;
  bool EndStore();
  void OpenSettings();
  void LoadSettings();
  void LoadLanguage();
  /// Again when the user or what he has chosen is another.
  void LoadSkin();
  void ShowWindow();
  void ShowTrouble();
  void OnPlansReady();
  void OnUserSwitched();
  void BeginAtTheDesk();
  void OnTimeIsUp();
  void PlayNamedPlan();
  bool SaveScreenshot();

  ClientOptions options_;
  QString store_url_, user_;
  TarnHost::LogInRequest account_;  // of the server, until the store is open; empty: as the url says
  std::pair<TarnHost::StoreTrouble, QString> trouble_;  // reported last, perhaps before there was a window
  bool asks_for_password_ = false;                      // the store, likewise
  QString settings_path_;                               // empty: nothing is kept
  QString copies_, copy_of_;                            // folder of copies; user whose one is shown
  QString copy_trouble_;                                // why one cannot be
  CClientTranslator translator_;
  std::shared_ptr<TarnHost::CPlanStore> store_;
  std::unique_ptr<CUserSettings> settings_;
  CPlanDataLoader loader_;
  std::unique_ptr<CMainWindow> window_;
  std::unique_ptr<CScene> scene_;
  bool begun_ = false, ended_ = false;
  bool is_new_user_ = false;  // whose plans have yet to come
};

}  // namespace TarnClient
