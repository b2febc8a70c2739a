#include "log_in/log_in_dialog.h"

#include <TarnPlanView/plan_clock.h>

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <utility>

#include "MarUIControl/line_edit.h"
#include "MarUIControl/moment_text.h"
#include "host_calls/ask.h"
#include "log_in/caps_lock.h"
#include "log_in/log_in_pool.h"
#include "log_in/typed_password.h"
#include "wall/plain_text_tip.h"

namespace TarnClient {

using TarnHost::LogInAnswer;
using TarnHost::LogInOutcome;
using TarnHost::LogInRequest;

namespace {

constexpr int kWidth = 380, kUserRow = 30, kMostUserRows = 6;
constexpr int kAgainMs = 2000, kShowAfterMs = 300;
constexpr int kLongestName = 1000;

}  // namespace

CLogInDialog::CLogInDialog(Setup setup, QWidget* parent)
    : CFormDialog(QStringLiteral("log_in"), setup.title, setup.confirm_text, parent),
      setup_(std::move(setup)),
      second_(new QTimer(this)) {
  setAttribute(Qt::WA_DeleteOnClose, false);
  if (!setup_.note.isEmpty()) {
    AddNote(setup_.note);
  }
  BuildUsers();
  BuildFields();
  setMinimumWidth(kWidth);
  again_.setSingleShot(true);
  again_.setInterval(kAgainMs);
  second_->setObjectName(QStringLiteral("log_in_second"));
  second_->setInterval(1000);
  connect(&again_, &QTimer::timeout, this, &CLogInDialog::Send);
  connect(second_, &QTimer::timeout, this, &CLogInDialog::OnSecond);
  show_.setSingleShot(true);
  show_.setInterval(kShowAfterMs);
  connect(&show_, &QTimer::timeout, this, &QWidget::show);
  connect(this, &CFormDialog::SignalConfirmed, this, &CLogInDialog::Try);
  ShowCapsLock(CapsLock::Now());
}

CLogInDialog::~CLogInDialog() {
  if (course_) {
    int running = kRunning;
    course_->compare_exchange_strong(running, kCancelled);
  }
}

void CLogInDialog::BuildUsers() {
  if (setup_.without_password.isEmpty()) {
    return;
  }
  AddNote(tr("Users without a password. A click logs in:"));
  users_ = new QListWidget(this);
  users_->setObjectName(QStringLiteral("log_in_users"));
  users_->setAccessibleName(tr("Users without a password"));
  users_->addItems(setup_.without_password);
  for (int row = 0; row < users_->count(); ++row) {
    users_->item(row)->setSizeHint(QSize(0, kUserRow));
    if (users_->item(row)->text() == setup_.user) {
      users_->setCurrentRow(row);
    }
  }
  if (users_->currentRow() < 0) {
    users_->setCurrentRow(0);
  }
  users_->setFixedHeight(kUserRow * qMin(users_->count(), kMostUserRows) + 2 * users_->frameWidth() + 2);
  AddWidget(users_);
  connect(users_, &QListWidget::itemClicked, this, &CLogInDialog::TryAs);
  users_->installEventFilter(this);
}

void CLogInDialog::BuildFields() {
  user_ = new MarUIControl::CLineEdit(this);
  user_->setObjectName(QStringLiteral("log_in_user"));
  user_->setMaxLength(kLongestName);
  user_->setText(setup_.user);
  user_->setReadOnly(setup_.is_user_fixed);
  AddField(tr("User"), user_);
  password_ = new MarUIControl::CLineEdit(this);
  password_->setObjectName(QStringLiteral("log_in_password"));
  password_->setEchoMode(QLineEdit::Password);
  password_->setInputMethodHints(Qt::ImhHiddenText | Qt::ImhNoPredictiveText | Qt::ImhSensitiveData);
  password_->installEventFilter(this);
  AddField(tr("Password"), password_);
  caps_lock_ = new QLabel(tr("Caps Lock is on."), this);
  caps_lock_->setObjectName(QStringLiteral("log_in_caps_lock"));
  AddWidget(caps_lock_);
  if (setup_.may_remember) {
    remember_ = new QCheckBox(tr("Remember the name on this machine"), this);
    remember_->setObjectName(QStringLiteral("log_in_remember"));
    remember_->setChecked(setup_.remembers);
    AddWidget(remember_);
  }
  course_text_ = new QLabel(this);
  course_text_->setObjectName(QStringLiteral("log_in_course"));
  course_text_->setTextFormat(Qt::PlainText);
  course_text_->setWordWrap(true);
  course_text_->hide();
  AddWidget(course_text_);
  connect(user_, &QLineEdit::textChanged, this, &CLogInDialog::RenewLock);
  if (users_) {
    users_->setFocus();
  } else if (setup_.user.isEmpty()) {
    user_->setFocus();
  } else {
    password_->setFocus();
  }
}

bool CLogInDialog::Remembers() const {
  return remember_ && remember_->isChecked();
}

QString CLogInDialog::User() const {
  return request_.user;
}

// A key tells more than the lights where the display does not know them.
bool CLogInDialog::eventFilter(QObject* watched, QEvent* event) {
  const bool is_key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  if (watched == users_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      TryAs(users_->currentItem());
      return true;
    }
  }
  if (watched == password_ && (is_key || event->type() == QEvent::FocusIn)) {
    std::optional<bool> is_on = CapsLock::Now();
    if (!is_on && event->type() == QEvent::KeyPress) {
      is_on = CapsLock::ShownBy(*static_cast<QKeyEvent*>(event));
    }
    const bool was_shown = caps_lock_->isVisible() && !(event->type() == QEvent::FocusIn);
    ShowCapsLock(is_on);
    if (caps_lock_->isVisible() && !was_shown) {
      ReadOut(caps_lock_);
    }
  }
  return CFormDialog::eventFilter(watched, event);
}

// What is not known stays as it was.
void CLogInDialog::ShowCapsLock(std::optional<bool> is_on) {
  caps_lock_->setVisible(is_on.value_or(!caps_lock_->isHidden() && isVisible()));
}

void CLogInDialog::TryAs(const QListWidgetItem* item) {
  if (item && !course_) {
    user_->setText(item->text());
    password_->clear();
    Try();
  }
}

void CLogInDialog::Try() {
  if (course_) {
    return;
  }
  request_ = {user_->text(), TypedPassword(*password_)};
  if (request_.user.isEmpty()) {
    ShowFault(tr("Type the name of a user."));
    user_->setFocus();
    return;
  }
  SetWaiting(true, tr("Logging in..."));
  Send();
}

void CLogInDialog::Begin(const LogInRequest& request) {
  request_ = request;
  user_->setText(request.user);
  SetWaiting(true, tr("Logging in..."));
  show_.start();
  Send();
}

void CLogInDialog::Send() {
  course_ = std::make_shared<std::atomic<int>>(kRunning);
  TarnHost::LogInSteps steps;
  steps.is_wanted = [course = course_] {
    int running = kRunning;
    return course->compare_exchange_strong(running, kTaken);
  };
  if (setup_.before_trees) {
    steps.before_trees = [before = setup_.before_trees, user = request_.user] { before(user); };
  }
  HostCalls::Ask([log_in = setup_.log_in, request = request_, steps] { return log_in(request, steps); })
      .On(LogInPool())
      .Replacing(calls_)
      .Then(this, [this](const LogInAnswer& answer) { OnAnswer(answer); });
}

void CLogInDialog::OnAnswer(const LogInAnswer& answer) {
  course_.reset();
  show_.stop();
  if (!answer.IsDone()) {
    show();
  }
  switch (answer.outcome) {
    case LogInOutcome::kDone:
      password_->clear();
      Q_EMIT SignalLoggedIn(request_);
      request_.password = {};
      return accept();
    case LogInOutcome::kWrongPassword:
    case LogInOutcome::kUnknownUser:
    case LogInOutcome::kRefused:
      return OnWrong(TextOf(answer));
    case LogInOutcome::kLocked:
      return OnLocked(answer.wait_seconds);
    case LogInOutcome::kUnavailable:
      SetWaiting(true, tr("The plan store does not answer. Trying again..."));
      course_ = std::make_shared<std::atomic<int>>(kRunning);
      course_text_->setToolTip(PlainTextTip(answer.line));
      again_.start();
      return;
  }
}

QString CLogInDialog::NoteOnCopy(const QDateTime& at) {
  return tr("Plans as of %1; the plan store does not answer. The password is the one of the last log-in on this"
            " machine.")
      .arg(MarUIControl::MomentText(at, TarnPlanView::CPlanClock::Now()));
}

QString CLogInDialog::TextOf(const LogInAnswer& answer) {
  switch (answer.outcome) {
    case LogInOutcome::kWrongPassword:
    case LogInOutcome::kUnknownUser:
      return tr("The name or the password is wrong.");
    default:
      break;
  }
  return answer.line.isEmpty() ? tr("The log-in was refused.") : answer.line;
}

void CLogInDialog::OnWrong(const QString& text) {
  request_.password = {};
  SetWaiting(false);
  ShowFault(text);
  password_->setFocus();
  password_->selectAll();
}

void CLogInDialog::OnLocked(int seconds) {
  OnWrong(QString());
  locked_user_ = request_.user;
  locked_seconds_ = seconds;
  second_->start();
  RenewLock();
}

void CLogInDialog::OnSecond() {
  --locked_seconds_;
  if (locked_seconds_ <= 0) {
    second_->stop();
  }
  RenewLock();
}

// Only that name is locked. What is said of another stays.
void CLogInDialog::RenewLock() {
  const bool was_shown = is_lock_shown_;
  is_lock_shown_ = locked_seconds_ > 0 && user_->text() == locked_user_;
  if (is_lock_shown_) {
    const QString text =
        tr("Too many wrong passwords. \"%1\" can log in again in %n second(s).", nullptr, locked_seconds_)
            .arg(locked_user_);
    if (was_shown) {
      RenewFault(text);
    } else {
      ShowFault(text);
    }
  } else if (was_shown) {
    ShowFault(QString());
  }
  if (!course_) {
    ConfirmButton()->setEnabled(!is_lock_shown_);
  }
}

void CLogInDialog::reject() {
  again_.stop();
  if (!course_) {
    return CFormDialog::reject();
  }
  int running = kRunning;
  if (course_->compare_exchange_strong(running, kCancelled)) {
    calls_.Drop();
    course_.reset();
    request_.password = {};
    SetWaiting(false);
  }  // else it is done, and the answer is on its way
}

void CLogInDialog::SetWaiting(bool waiting, const QString& text) {
  ShowFault(QString());
  is_lock_shown_ = false;
  SetBusy(waiting);
  const bool is_news = waiting && course_text_->text() != text;
  course_text_->setText(text);
  course_text_->setToolTip(QString());
  course_text_->setVisible(waiting);
  if (is_news) {
    ReadOut(course_text_);
  }
}

}  // namespace TarnClient
