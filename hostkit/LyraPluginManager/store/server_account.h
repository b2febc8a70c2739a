#pragma once

#include <QString>
#include <chrono>
#include <mutex>

#include "TarnHost/log_in.h"

namespace TarnHost::Store {

/// A store's address, as which account it is opened next. Thread: any.
class CStoreUrl {
 public:
  /// An empty user leaves the address as it is.
  CStoreUrl(const QString& url, const LogInRequest& account);

  QString Get() const;
  /// As far as it is known here.
  LogInRequest Account() const;
  void SetAccount(const LogInRequest& account);

 private:
  const QString url_;
  mutable std::mutex mutex_;
  LogInRequest account_;
};

/// The address of a store on a server with another account in it.
QString WithAccount(const QString& url, const LogInRequest& account);

/// Whether the server of this store lets the account in; waits for it. Thread: any.
LogInAnswer AskServer(const QString& url, std::chrono::milliseconds patience);

}  // namespace TarnHost::Store
