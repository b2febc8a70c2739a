#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <optional>
#include <vector>

#include "TarnHost/secret.h"
#include "sign_in/sign_in_offer.h"

namespace TarnClient {

/// Answers a camera that asks who is there: by digest where it knows one of those offered, else by the password itself.
class CRtspSignIn {
 public:
  enum class Answer {
    CanAnswer,
    /// There is no password, or the one there is was refused.
    Refused,
    /// Only ways that are not known here are offered.
    UnknownWay
  };

  CRtspSignIn(const QString& user, const TarnHost::CSecret& secret);

  /// What the values of WWW-Authenticate ask for. `answered`: this request was sent a second time for it already.
  Answer Take(const QVector<QByteArray>& challenges, bool answered);
  /// The value of Authorization for a request; blank while nothing was asked for.
  QByteArray Header(const QByteArray& method, const QByteArray& uri);

 private:
  std::optional<SignInOffer> BestOf(const std::vector<SignInOffer>& offers) const;

  QByteArray user_;
  TarnHost::CSecret secret_;
  std::optional<SignInOffer> offer_;  // that is answered
  int count_ = 0;                     // of requests that it was answered with
};

}  // namespace TarnClient
