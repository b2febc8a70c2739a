#include "window/user_switch.h"

#include <utility>

#include "host_calls/ask.h"
#include "log_in/log_in_dialog.h"
#include "log_in/log_in_pool.h"

namespace TarnClient {

using TarnHost::LogInAnswer;
using TarnHost::LogInOutcome;
using TarnHost::LogInRequest;

namespace {

// For a dialog: nothing comes of what was cancelled meanwhile.
decltype(LogInCalls::log_in) JustCheck(const LogInCalls& calls) {
  return [check = calls.check_password](const LogInRequest& request, const TarnHost::LogInSteps& steps) {
    LogInAnswer answer = check(request);
    if (answer.IsDone() && !steps.is_wanted()) {
      answer.outcome = LogInOutcome::kRefused;
    }
    return answer;
  };
}

// Of a user who is thought to have none.
bool HasPasswordByNow(const LogInAnswer& answer) {
  return answer.outcome == LogInOutcome::kWrongPassword || answer.outcome == LogInOutcome::kLocked;
}

}  // namespace

CUserSwitch::CUserSwitch(LogInCalls calls, Desk desk, QObject* parent)
    : QObject(parent), calls_(std::move(calls)), desk_(std::move(desk)) {}

bool CUserSwitch::IsUnderWay() const {
  return dialog_ || checking_.IsUnderWay();
}

void CUserSwitch::SwitchTo(const QString& user) {
  if (IsUnderWay()) {
    return;
  }
  if (calls_.has_password(user)) {
    return AskForPassword(user);
  }
  const LogInRequest request{user};
  HostCalls::Ask([check = calls_.check_password, request] { return check(request); })
      .On(LogInPool())
      .Within(checking_)
      .Then(this, [this, request](const LogInAnswer& answer) {
        if (answer.IsDone()) {
          LogInAs(request);
        } else if (HasPasswordByNow(answer)) {
          AskForPassword(request.user);
        } else {
          Q_EMIT SignalRefused(answer.line.isEmpty() ? CLogInDialog::TextOf(answer) : answer.line);
        }
      });
}

void CUserSwitch::AskForPassword(const QString& user) {
  CLogInDialog::Setup setup;
  setup.title = tr("Switch user");
  setup.confirm_text = CLogInDialog::tr("Log in");
  setup.user = user;
  setup.is_user_fixed = true;
  setup.log_in = JustCheck(calls_);
  Open(new CLogInDialog(std::move(setup), desk_.window()), &CUserSwitch::LogInAs);
}

void CUserSwitch::Unlock() {
  if (IsUnderWay()) {
    return;
  }
  CLogInDialog::Setup setup;
  setup.title = tr("Unlock the desk");
  setup.confirm_text = tr("Unlock");
  setup.note = tr("Another user who logs in here takes the desk over.");
  setup.user = desk_.user();
  setup.log_in = JustCheck(calls_);
  Open(new CLogInDialog(std::move(setup), desk_.window()), &CUserSwitch::OnMayUnlock);
}

void CUserSwitch::Open(CLogInDialog* dialog, Next next) {
  dialog_ = dialog;
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowModality(Qt::ApplicationModal);
  // Later, when the dialog has gone: there may be a question.
  connect(dialog, &CLogInDialog::SignalLoggedIn, this, next, Qt::QueuedConnection);
  dialog->show();
}

void CUserSwitch::OnMayUnlock(const LogInRequest& request) {
  if (request.user == desk_.user()) {
    Q_EMIT SignalUnlocked();
  } else {
    LogInAs(request);
  }
}

// The password is the right one, so what is being edited may be asked about. Only a store that fails between the two
// keeps the user from coming now; it is asked again until that is cancelled.
void CUserSwitch::LogInAs(const LogInRequest& request) {
  const QPointer<CUserSwitch> alive(this);
  if (!desk_.leave([alive, request] {
        if (alive) {
          alive->LogInAs(request);
        }
      })) {
    return;
  }
  CLogInDialog::Setup setup;
  setup.title = tr("Switch user");
  setup.confirm_text = CLogInDialog::tr("Log in");
  setup.is_user_fixed = true;
  setup.log_in = calls_.log_in;
  setup.before_trees = [alive, take = desk_.take](const QString& user) {
    if (alive) {
      take(user);
    }
  };
  delete dialog_;
  dialog_ = new CLogInDialog(std::move(setup), desk_.window());
  dialog_->setWindowModality(Qt::ApplicationModal);
  connect(dialog_, &QDialog::finished, dialog_, &QObject::deleteLater);
  dialog_->Begin(request);
}

}  // namespace TarnClient
