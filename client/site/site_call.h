#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "LyraPluginManager/view_plugin_protocol.h"
#include "TarnHost/camera_access.h"
#include "host_calls/result.h"

namespace TarnHost {
class IHostServices;
}

namespace TarnClient {

/// What became of changes of the site.
using SiteCallResult = HostCalls::Result<view_plugin_protocol::ResponseHeader>;

/// Answers call(services, error); off the GUI thread. Says so when the service has been stopped.
SiteCallResult RunOnSite(const std::function<bool(TarnHost::IHostServices&, std::string* error)>& call);

/// Sends changes of regions and cameras off the GUI thread; `then` is called later on it, unless `context` is destroyed
/// before. Not made when the user is switched meanwhile. Thread: GUI.
void SendSiteChanges(const TarnHost::CameraChanges& changes, QObject* context,
                     const std::function<void(const SiteCallResult&)>& then);
/// The same with the certificates that vouch for cameras.
void SendCameraAuthority(const std::string& pem, QObject* context,
                         const std::function<void(const SiteCallResult&)>& then);

}  // namespace TarnClient
