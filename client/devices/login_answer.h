#pragma once

#include <QByteArray>
#include <QString>

namespace TarnClient {

/// Who asks for what, over HTTP.
struct LoginRequest {
  QString user, password;
  QByteArray method, uri;
  QByteArray nonce;           // ours, new each time
  bool is_encrypted = false;  // no one can listen
};

/// What to answer to a server that asks who we are ("WWW-Authenticate", with all that it offers): digest by SHA-256 or
/// MD5, or the password itself where no one can listen. Empty when it knows none of these.
QByteArray LoginAnswer(const QByteArray& challenge, const LoginRequest& request);

}  // namespace TarnClient
