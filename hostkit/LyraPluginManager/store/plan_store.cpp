#include "TarnHost/plan_store.h"

#include <utility>

#include "TarnHost/plan_site.h"
#include "marlog/marlog.h"
#include "store/feature_switches.h"
#include "store/migrations.h"
#include "store/postgres_address.h"
#include "store/server_account.h"
#include "store/store_error.h"
#include "store/store_services.h"

namespace TarnHost {
namespace {

void CheckOverrides(const QMap<QString, int>& overrides) {
  for (auto it = overrides.begin(); it != overrides.end(); ++it) {
    if (!CPlanStore::SwitchNames().contains(it.key())) {
      throw Store::CStoreError(Store::CStoreError::kRefused,
                               QStringLiteral("There is no switch \"%1\".").arg(it.key()));
    }
  }
}

PlanStoreOptions Completed(PlanStoreOptions options) {
  if (!options.now) {
    options.now = [] { return QDateTime::currentDateTime(); };
  }
  if (!options.steady_now) {
    options.steady_now = &std::chrono::steady_clock::now;
  }
  if (!options.first_content) {
    options.first_content = &MakeEmptySite;
  }
  return options;
}

}  // namespace

std::shared_ptr<CPlanStore> CPlanStore::Open(const PlanStoreOptions& options, QString* error) {
  try {
    CheckOverrides(options.switch_overrides);
    const auto store = std::make_shared<Store::CStoreServices>(Completed(options));
    store->Start();
    return store;
  } catch (const Store::CStoreError& failure) {
    marlog::Write("LyraClientError", marlog::Error, "[%s(%d)] [0x%08x] - %s", "TarnHost::CPlanStore::Open", __LINE__,
                  0U, qUtf8Printable(failure.LogText()));
    if (error != nullptr) {
      *error = failure.Text().Shown();
    }
    return nullptr;
  }
}

LogInAnswer CPlanStore::AskServer(const QString& url, const LogInRequest& account, std::chrono::milliseconds patience) {
  if (!Store::PostgresAddress::IsMeantBy(url)) {
    return {LogInOutcome::kDone};
  }
  return Store::AskServer(Store::CStoreUrl(url, account).Get(), patience);
}

int CPlanStore::LayoutVersion() {
  return Store::AllMigrations().back().to;
}

QString CPlanStore::ShownAddress(const QString& url) {
  return Store::ShownAddress(url);
}

QStringList CPlanStore::SwitchNames() {
  return Store::FeatureSwitchNames();
}

}  // namespace TarnHost
