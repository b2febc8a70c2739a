#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <string>

#include "TarnHost/secret.h"

namespace TarnClient {

/// An address that is to be tried before it is stored.
struct CameraTrial {
  std::string url, user;
  TarnHost::CSecret secret;
  std::string authority;
};

/// What came of it; the text says it to the user.
struct CameraTrialResult {
  bool is_live = false;
  QString text;
};

/// Tries an address and answers once, later and on the GUI thread, unless `context` is destroyed before. Thread: GUI.
using TryCamera =
    std::function<void(const CameraTrial& trial, QObject* context, std::function<void(const CameraTrialResult&)> then)>;

}  // namespace TarnClient
