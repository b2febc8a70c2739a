#include "TarnUIDataController/message_tip_manager.h"
#include "app/scenes.h"
#include "help/help_desk.h"
#include "messages/message_desk.h"
#include "window/main_window.h"

// Scenes of help, menu and messages.
namespace TarnClient {

namespace {

using tarn_ui_data_controller::CMessageTipManager;

constexpr int kAtTop = 1, kDistance = 48;
enum Kind { Success, Failure, Warning, Hint };

void Say(CMainWindow* window, const char* text, int kind) {
  CMessageTipManager::Instance().ShowMessage(window, QString::fromLatin1(text), kind, kAtTop, kDistance);
}

}  // namespace

void CScene::AddCall(const std::function<void()>& call) {
  Add([call] {
    call();
    return true;
  });
}

void CScene::Help() {
  Browse();
  AddCall([this] { window_->Help().Open(); });
}

void CScene::About() {
  Browse();
  AddCall([this] { window_->OpenAbout(); });
}

void CScene::Menu() {
  Browse();
  AddPlay(QStringLiteral("Gate overview"));
  AddCurrent(QStringLiteral("Gate overview"));
  AddCall([this] { window_->OpenMenu(); });
}

void CScene::Messages() {
  Browse();
  AddCall([this] {
    Say(window_, "Created North gate", Success);
    Say(window_, "Not saved: no plan is playing.", Failure);
    for (int i = 0; i < 12; ++i) {
      Say(window_, "The service does not answer", Failure);
    }
    Say(window_, "The name is longer than 64 characters", Warning);
    Say(window_, "Saved Gate overview", Success);
    window_->Messages().Open();
  });
}

void CScene::TipSuccess() {
  Browse();
  AddCall([this] { Say(window_, "Renamed to Roof", Success); });
}

void CScene::TipError() {
  Browse();
  AddCall([this] {
    for (int i = 0; i < 12; ++i) {
      Say(window_, "The service does not answer", Failure);
    }
  });
}

void CScene::TipWarning() {
  Browse();
  AddCall([this] { Say(window_, "The name is longer than 64 characters", Warning); });
}

void CScene::TipHint() {
  Browse();
  AddCall([this] { Say(window_, "Choose at least one user", Hint); });
}

}  // namespace TarnClient
