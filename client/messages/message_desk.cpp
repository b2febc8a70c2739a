#include "messages/message_desk.h"

#include <QAction>

#include "TarnUIDataController/message_tip_manager.h"
#include "messages/message_log.h"
#include "messages/messages_window.h"
#include "window/window_actions.h"

namespace TarnClient {

using tarn_ui_data_controller::CMessageTipManager;

CMessageDesk::CMessageDesk(CWindowActions* actions, QWidget* window)
    : QObject(window), window_(window), log_(new CMessageLog(this)) {
  auto* tips = &CMessageTipManager::Instance();
  connect(tips, &CMessageTipManager::SignalTipAsked, this,
          [this](const QString& text, int kind) { log_->Add(text, kind); });
  connect(tips, &CMessageTipManager::SignalTipClicked, this, &CMessageDesk::Open);
  connect(log_, &CMessageLog::SignalUnreadChanged, this, &CMessageDesk::ShowUnread);
  Add(actions);
}

void CMessageDesk::Add(CWindowActions* actions) {
  actions_.removeAll({});
  actions_.append(actions);
  actions->Connect(WindowCommand::Messages, [this] { Open(); });
  ShowUnreadIn(actions, log_->Unread());
}

// The page shows the log, and the window that it belongs to outlives this.
CMessageDesk::~CMessageDesk() {
  delete page_;
}

void CMessageDesk::Open() {
  CMessageTipManager::Instance().TakeAway();
  log_->MarkRead();
  if (!page_) {
    page_ = new CMessagesWindow(log_, window_);
    page_->show();
  }
  page_->setWindowState(page_->windowState() & ~Qt::WindowMinimized);
  page_->raise();
  page_->activateWindow();
}

void CMessageDesk::ForgetUser() {
  CMessageTipManager::Instance().TakeAway();
  if (page_) {
    page_->close();
  }
  log_->Clear();
}

CMessagesWindow* CMessageDesk::Page() const {
  return page_;
}

void CMessageDesk::ShowUnread(int unread) {
  for (CWindowActions* actions : qAsConst(actions_)) {
    if (actions) {
      ShowUnreadIn(actions, unread);
    }
  }
}

void CMessageDesk::ShowUnreadIn(CWindowActions* actions, int unread) {
  QAction* action = actions->Of(WindowCommand::Messages);
  QString tip = action->text();
  QString count(QLatin1Char(' '));  // an empty text would be the command's again
  if (unread > 0) {
    tip = tr("%n message(s) not read. Messages", nullptr, unread);
    count = QString::number(unread);
  }
  action->setIconText(count);
  actions->SetTipText(WindowCommand::Messages, tip);
}

}  // namespace TarnClient
