#include "site/site_call.h"

#include <QCoreApplication>

#include "TarnHost/host_services.h"
#include "host_calls/ask.h"

namespace TarnClient {

SiteCallResult RunOnSite(const std::function<bool(TarnHost::IHostServices&, std::string* error)>& call) {
  SiteCallResult result;
  if (const auto services = TarnHost::InstalledHostServices()) {
    result.ok = call(*services, &result.response.error_info);
  } else {
    result.response.error_info =
        QCoreApplication::translate("TarnHost::Store", "The plan service has been stopped.").toStdString();
  }
  return result;
}

void SendSiteChanges(const TarnHost::CameraChanges& changes, QObject* context,
                     const std::function<void(const SiteCallResult&)>& then) {
  HostCalls::Ask([changes] {
    return RunOnSite([&changes](TarnHost::IHostServices& services, std::string* error) {
      TarnHost::CameraChangesMade made;
      return services.ChangeCameras(changes, made, error);
    });
  })
      .AsCurrentUser()
      .Then(context, then);
}

void SendCameraAuthority(const std::string& pem, QObject* context,
                         const std::function<void(const SiteCallResult&)>& then) {
  HostCalls::Ask([pem] {
    return RunOnSite([&pem](TarnHost::IHostServices& services, std::string* error) {
      return services.SetCameraAuthority(pem, error);
    });
  })
      .AsCurrentUser()
      .Then(context, then);
}

}  // namespace TarnClient
