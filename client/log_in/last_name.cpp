#include "log_in/last_name.h"

#include <QJsonObject>

#include "TarnHost/plan_store.h"

namespace TarnClient {

namespace {

constexpr auto kPart = QLatin1String("log_in");
constexpr auto kName = QLatin1String("name");

}  // namespace

// By the store's address: before the log-in a server does not say which site it is. No user has the empty name.
LastName::LastName(const QString& settings_path, const QString& store_url)
    : file_(settings_path, TarnHost::CPlanStore::ShownAddress(store_url), QString()) {
  if (CanBeKept()) {
    name_ = file_.Read().values.value(kPart).toObject().value(kName).toString();
  }
}

void LastName::Keep(const QString& name) {
  if (CanBeKept() && name != name_) {
    file_.Write({{kPart, QJsonObject{{kName, name}}}});
  }
  name_ = name;
}

}  // namespace TarnClient
