#include "users/users_call.h"

#include "TarnHost/host_services.h"
#include "host_calls/ask.h"

namespace TarnClient {

void SendUserChanges(const TarnHost::SiteUserChanges& changes, QObject* context,
                     const std::function<void(const SiteCallResult&)>& then) {
  HostCalls::Ask([changes] {
    return RunOnSite([&changes](TarnHost::IHostServices& services, std::string* error) {
      return services.ChangeSiteUsers(changes, error);
    });
  })
      .AsCurrentUser()
      .Then(context, then);
}

}  // namespace TarnClient
