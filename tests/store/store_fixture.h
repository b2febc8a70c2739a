#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"
#include "plan_calls.h"

namespace StoreTest {

namespace view = view_plugin_protocol;
using TarnTest::CameraPage;

/// Users ann (all rights), bob (add and edit), cid (none), dora, eve and fred (delete, add and edit only); a few groups
/// and plans of each family.
TarnHost::PlanSite SmallSite();

/// A store of its own for one test case, on the engine that the environment names.
class CStoreFixture {
 public:
  CStoreFixture();

  TarnHost::PlanStoreOptions options;  // of the next Open()

  QString Url() const { return options.url; }
  QString File() const;
  /// Opens the store as one more client, logged in and downloaded.
  std::shared_ptr<TarnHost::CPlanStore> Open(const QString& user = "ann") const;

  /// Runs a statement in the store's database, past the store. The second answers the first value of the first row.
  void RunPastTheStore(const QString& statement) const { ReadPastTheStore(statement); }
  QString ReadPastTheStore(const QString& statement) const;

  static bool OnPostgres();

 private:
  QTemporaryDir folder_;
};

/// A client with a store of its own.
class CClient : public TarnTest::CPlanCalls {
 public:
  explicit CClient(std::shared_ptr<TarnHost::CPlanStore> store) : CPlanCalls(*store), store_(std::move(store)) {}

  TarnHost::CPlanStore* operator->() const { return store_.get(); }
  TarnHost::CPlanStore& operator*() const { return *store_; }

  std::string Plan(const char* name) const { return store_->FindPlanByName(QString::fromUtf8(name)); }
  /// The request that leaves the plan as it is.
  view::UpdatePlanRequest Unchanged(const std::string& plan) const { return TarnTest::Unchanged(Detail(plan)); }

 private:
  std::shared_ptr<TarnHost::CPlanStore> store_;
};

}  // namespace StoreTest
