#pragma once

#include <QObject>
#include <functional>

#include "TarnHost/site_users.h"
#include "site/site_call.h"

namespace TarnClient {

/// Sends changes of users, user groups and limits off the GUI thread; `then` is called later on it, unless `context` is
/// destroyed before. Not made when the user is switched meanwhile. Thread: GUI.
void SendUserChanges(const TarnHost::SiteUserChanges& changes, QObject* context,
                     const std::function<void(const SiteCallResult&)>& then);

}  // namespace TarnClient
