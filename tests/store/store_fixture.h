#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"

namespace StoreTest {

namespace view = view_plugin_protocol;

/// Users ann (all rights), bob (add and edit), cid (none), dora, eve and fred (delete, add and edit only); a few groups
/// and plans of each family.
TarnHost::PlanSite SmallSite();
view::PlanPage Page(int page_no, int split_type, std::vector<std::string> cameras = {"#0"});

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

/// The calls of a store in the form tests want them: a text that is empty when the call returned true.
class CClient {
 public:
  explicit CClient(std::shared_ptr<TarnHost::CPlanStore> store) : store_(std::move(store)) {}

  TarnHost::CPlanStore* operator->() const { return store_.get(); }
  TarnHost::CPlanStore& operator*() const { return *store_; }

  /// "name@parent" of each group or plan below `parent`; "!text" for a failure.
  QStringList Groups(const std::string& parent) const;
  QStringList Plans(const std::string& group) const;
  /// Code of the child group with this name; empty when there is none.
  std::string Group(const std::string& parent, const std::string& name) const;
  std::string Plan(const char* name) const { return store_->FindPlanByName(QString::fromUtf8(name)); }
  view::GetPlanDetailResponse Detail(const std::string& plan, int kind = 0) const;
  QStringList Search(const char* text, int scope) const;
  std::string DefaultView() const;

  QString AddGroup(const std::string& parent, const std::string& name, std::string* code = nullptr) const;
  QString AddPlan(const std::string& parent, const std::string& name, std::string* code = nullptr) const;
  QString RenameGroup(const std::string& code, const std::string& name) const;
  QString DeleteGroup(const std::string& code) const;
  QString DeletePlan(const std::string& code) const;
  QString Update(const view::UpdatePlanRequest& request) const;
  QString Share(const std::string& plan, const std::string& users) const;
  QString SetDefaultView(const std::string& code, int type) const;

  /// The request that leaves the plan as it is.
  view::UpdatePlanRequest Unchanged(const std::string& plan) const;

 private:
  std::shared_ptr<TarnHost::CPlanStore> store_;
};

}  // namespace StoreTest
