#include "window/extra_wall.h"

#include <QApplication>
#include <QCloseEvent>
#include <utility>

#include "plans/plan_player.h"
#include "window/closing_question.h"
#include "window/leaving.h"
#include "window/window_actions.h"

namespace TarnClient {

CExtraWall::CExtraWall(CWallDesk::Setup desk, const Client& client) : CDeskWindow(nullptr), client_(client) {
  setObjectName(QStringLiteral("extra_wall"));
  setAttribute(Qt::WA_QuitOnClose, false);
  TakeDesk(std::move(desk));
  ShowTitle(QString());
  AddWallName();
  AddStoreState(client_.store_url);
  AddMessages(client_.messages);
  AddMenu({{WindowCommand::History, WindowCommand::Messages},
           {WindowCommand::Users, WindowCommand::Lock, WindowCommand::Settings},
           {WindowCommand::NewWall, WindowCommand::CloseWall},
           {WindowCommand::Keys, WindowCommand::About},
           {WindowCommand::Quit}});
  Actions().Connect(WindowCommand::CloseWall, [this] { close(); });
  connect(&Desk(), &CWallDesk::SignalTitle, this, &CExtraWall::ShowTitle);
  OrderTabs();
  Desk().FocusRows();
}

CExtraWall::~CExtraWall() {
  Desk().End();
}

void CExtraWall::ShowTitle(const QString& plan) {
  QString title = WallName(Desk().Number());
  if (!plan.isEmpty()) {
    title += QStringLiteral(" - ") + plan;
  }
  setWindowTitle(title);
}

// The end of the desktop's session leaves the wall to be found again.
void CExtraWall::closeEvent(QCloseEvent* event) {
  const bool may_stop = std::exchange(may_stop_playing_, false) || MayClose({Desk().State()}, *client_.settings, this);
  const auto again = [this] {
    may_stop_playing_ = true;
    close();
  };
  event->setAccepted(may_stop && client_.leaving->MayLeave({&Desk()}, again));
  if (event->isAccepted() && !qApp->isSavingSession()) {
    Player().Stop();  // takes the marks from the rows, which stay
    Q_EMIT SignalClosed();
  }
}

}  // namespace TarnClient
