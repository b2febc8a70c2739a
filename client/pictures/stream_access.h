#pragma once

#include <QByteArray>
#include <QString>

#include "TarnHost/secret.h"

namespace TarnClient {

/// As a plan's window names it.
enum class StreamKind { Main = 0, Sub = 1 };

/// How one stream of a camera is reached.
struct StreamAccess {
  QString url;  // rtsp or rtsps
  QString user;
  TarnHost::CSecret secret;
  QByteArray authority;  // certificates (PEM) that vouch for rtsps; empty: those that the system trusts

  bool operator==(const StreamAccess& other) const {
    return url == other.url && user == other.user && secret == other.secret && authority == other.authority;
  }
  bool operator!=(const StreamAccess& other) const { return !(*this == other); }
};

}  // namespace TarnClient
