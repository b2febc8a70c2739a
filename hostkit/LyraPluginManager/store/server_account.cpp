#include "store/server_account.h"

#include <QUrl>
#include <utility>

#include "store/postgres_address.h"
#include "store/postgres_refusal.h"
#include "store/store_error.h"
#include "store/store_texts.h"

namespace TarnHost::Store {
namespace {

QString Encoded(const QString& text) {
  return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

// What is no address is named by what opens it.
LogInRequest AccountIn(const QString& url) {
  try {
    const PostgresAddress address = PostgresAddress::FromText(url);
    return {address.user, CSecret(address.password.toStdString())};
  } catch (const CStoreError&) {
    return {};
  }
}

}  // namespace

CStoreUrl::CStoreUrl(const QString& url, const LogInRequest& account) : url_(url), account_(account) {}

QString CStoreUrl::Get() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return PostgresAddress::IsMeantBy(url_) && !account_.user.isEmpty() ? WithAccount(url_, account_) : url_;
}

LogInRequest CStoreUrl::Account() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return account_.user.isEmpty() ? AccountIn(url_) : account_;
}

void CStoreUrl::SetAccount(const LogInRequest& account) {
  const std::lock_guard<std::mutex> lock(mutex_);
  account_ = account;
}

QString WithAccount(const QString& url, const LogInRequest& account) {
  const int begin = url.indexOf(QLatin1String("//")) + 2;
  const int end = url.indexOf('/', begin);
  const int at = url.lastIndexOf('@', end);
  QString user = Encoded(account.user);
  if (!account.password.IsEmpty()) {
    user += ':' + Encoded(QString::fromStdString(account.password.Reveal()));
  }
  return url.left(begin) + user + '@' + url.mid(at < begin ? begin : at + 1);
}

LogInAnswer AskServer(const QString& url, std::chrono::milliseconds patience) {
  try {
    const PostgresAttempt attempt = TryToConnect(PostgresAddress::FromText(url), patience);
    if (attempt.lets_in) {
      return {LogInOutcome::kDone};
    }
    if (attempt.refuses_account) {
      return {LogInOutcome::kWrongPassword, 0, CStoreText(kWrongPassword).Shown()};
    }
    return {LogInOutcome::kUnavailable, 0, attempt.reason.Shown()};
  } catch (const CStoreError& error) {
    return {LogInOutcome::kRefused, 0, error.Text().Shown()};
  }
}

}  // namespace TarnHost::Store
