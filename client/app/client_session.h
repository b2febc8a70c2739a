#pragma once

#include <QObject>
#include <memory>

#include "app/client_options.h"
#include "app/client_translator.h"
#include "app/plan_data_loader.h"
#include "settings/user_settings.h"

namespace TarnHost {
class CPlanStore;
}

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
  bool OpenStore(QString* error);
  bool LogIn(QString* error);
  /// What is wrong with the log, as one line.
  QString OpenLog();
  bool EndStore();
  void LoadSettings();
  void LoadLanguage();
  /// Again when the user or what he has chosen is another.
  void LoadSkin();
  void ShowWindow();
  void OnPlansReady();
  void OnUserSwitched();
  void BeginAtTheDesk();
  void OnTimeIsUp();
  void PlayNamedPlan();
  bool SaveScreenshot();

  ClientOptions options_;
  QString store_url_, user_;
  CClientTranslator translator_;
  std::shared_ptr<TarnHost::CPlanStore> store_;
  std::unique_ptr<CUserSettings> settings_;
  CPlanDataLoader loader_;
  std::unique_ptr<CMainWindow> window_;
  std::unique_ptr<CScene> scene_;
  bool begun_ = false, ended_ = false;
};

}  // namespace TarnClient
