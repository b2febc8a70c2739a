#pragma once

#include <QObject>
#include <QSqlDatabase>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <set>
#include <string>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"
#include "plan_calls.h"

namespace StoreTest {

namespace view = view_plugin_protocol;
using TarnTest::CameraPage;

const QString kNoAnswer = "The service does not answer";
constexpr int kPlanType = ResourceData::RT_VIEW, kGroupType = ResourceData::RT_VIEW_GROUP;

/// Users ann (all rights), bob (add and edit), cid (none), dora, eve and fred (delete, add and edit only); a few groups
/// and plans of each family.
TarnHost::PlanSite SmallSite();

/// A connection to a store's database, past the store.
class CDirectAccess {
 public:
  explicit CDirectAccess(const QString& url);
  ~CDirectAccess();
  CDirectAccess(const CDirectAccess&) = delete;
  CDirectAccess& operator=(const CDirectAccess&) = delete;

  /// The first value of the first row. Ends the program when the statement fails.
  QString Run(const QString& statement) const;
  /// The same; "!" and the database's words when it fails.
  QString Try(const QString& statement) const;

 private:
  QString name_;
};

/// A store of its own for one test case, on the engine that the environment names.
class CStoreFixture {
 public:
  CStoreFixture();

  TarnHost::PlanStoreOptions options;  // of the next Open()

  QString Url() const { return options.url; }
  QString File() const;
  /// Opens the store as one more client, logged in and downloaded.
  std::shared_ptr<TarnHost::CPlanStore> Open(const QString& user = "ann") const;
  void Make() const { Open().reset(); }
  /// The text of a store that cannot be opened; empty for one that can.
  QString OpeningError() const;

  /// Announced to the stores that are open, as their own changes are.
  void RunPastTheStore(const QString& statement) const;
  QString ReadPastTheStore(const QString& statement) const { return CDirectAccess(options.url).Run(statement); }

  static bool OnPostgres();
  /// The server's own database, for who may do anything.
  static QString SuperuserUrl();
  /// Whether each user opens the store under a role of the server that is his own.
  static bool UnderRoles();
  /// The store's address for this user's role.
  QString UrlOf(const QString& user) const;
  /// All deletions were made an hour ago by the server's clock, which bounds what a user's role may forget.
  void AgeDeletions() const;
  /// Makes the store, and roles for its users.
  void MakeRoles() const;

 private:
  std::shared_ptr<TarnHost::CPlanStore> OpenAs(const QString& user) const;

  QTemporaryDir folder_;
  mutable bool has_roles_ = false;
};

/// Keeps every client from writing, as one does that is in the midst of a long change.
class CWritersHold {
 public:
  explicit CWritersHold(const CStoreFixture& fixture);
  ~CWritersHold() { access_.Run("ROLLBACK"); }

 private:
  const CDirectAccess access_;
};

/// A user at a machine of his own; copies are the same one. Opens the store when it is first used.
class CClient : public TarnTest::CPlanCalls {
 public:
  explicit CClient(std::shared_ptr<TarnHost::CPlanStore> store) : desk_(new Desk{nullptr, {}, std::move(store)}) {}
  CClient(const CStoreFixture* fixture, const QString& user) : desk_(new Desk{fixture, user, nullptr}) {}

  TarnHost::CPlanStore* operator->() const;
  TarnHost::CPlanStore& operator*() const { return *operator->(); }
  /// Lets go of the store; the next use opens it again.
  void Leave() const { desk_->store.reset(); }

  std::string Plan(const char* name) const { return (*this)->FindPlanByName(QString::fromUtf8(name)); }
  /// The request that leaves the plan as it is.
  view::UpdatePlanRequest Unchanged(const std::string& plan) const { return TarnTest::Unchanged(Detail(plan)); }

 protected:
  TarnHost::IHostServices& Host() const override { return *operator->(); }

 private:
  struct Desk {
    const CStoreFixture* fixture;
    QString user;
    std::shared_ptr<TarnHost::CPlanStore> store;
  };
  std::shared_ptr<Desk> desk_;
};

/// What a user is answered, call by call, about a group and a plan in it that `owner` sees and he does not. `own` is a
/// plan that he may change.
QStringList AnswersToAStranger(const CClient& stranger, const CClient& owner, const std::string& group,
                               const std::string& plan, const std::string& own);

/// Base of the store's tests: each case has a store of its own, with two users who open it when they are first named.
class CStoreTest : public QObject {
  Q_OBJECT
 protected:
  /// Notes each line of trouble of the stores that are opened from here on; an empty one says that it is over.
  void FollowTroubles(const std::set<TarnHost::StoreTrouble>& wanted);

  std::unique_ptr<CStoreFixture> fixture_;
  CClient ann_{nullptr}, bob_{nullptr};
  QStringList troubles_;

 protected Q_SLOTS:
  void init();
  void cleanup();
};

}  // namespace StoreTest
