#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "TarnHost/host_services.h"
#include "host_export.h"

namespace TarnHost {

struct PlanSite;

/// What keeps a store that is open from following and saving changes.
enum class StoreTrouble { kNone, kConnectionLost, kLocked, kReadOnly, kOther };

struct PlanStoreOptions {
  QString url;                                  // "sqlite:FILE", "sqlite::memory:" or "postgresql://..."
  std::chrono::milliseconds download_delay{0};  // how long a download of the plan data takes at the least
  QMap<QString, int> switch_overrides;          // by the switch's name in the store; for this process only
  std::function<PlanSite()> first_content;      // what a new store is filled with; unset: MakeEmptySite()
  std::function<QDateTime()> now;               // the clock, asked from any thread; unset: the local time
  std::function<std::chrono::steady_clock::time_point()> steady_now;  // time that no one sets; unset: the steady clock
  /// Called on the GUI thread, from the event loop: what the trouble is when it begins or becomes another, with a line
  /// that says more; kNone and no line when it is over. The store goes on trying by itself.
  std::function<void(StoreTrouble trouble, const QString& line)> on_trouble;
};

/// The plan store: groups, plans, users, rights, cameras and configuration in one database, with the whole plan tree
/// in memory for reading and one database thread that writes. A PostgreSQL store must be an existing database; its
/// tables and first content are made when it is empty.
///
/// Reads of the tree answer from memory; a plan's detail, default views, cameras and favorites from the database.
/// Writes run in one transaction each on the database thread and are awaited; a call that returned true is durable.
/// No call waits for ever: after 2 s on the GUI thread and 10 s on any other it returns false with "The service does
/// not answer", on the GUI thread at once until the store answers again. A write that is committed after its caller
/// abandoned it counts as somebody else's change.
/// Changes of other processes on the same database arrive within a second and are reported to the registered observers
/// on the GUI thread; the process's own changes are not. Thread: Open() and LogIn() on the GUI thread; the services
/// from any.
class TARN_HOST_EXPORT CPlanStore : public IHostServices {
 public:
  /// Opens the store, creating it when it does not exist. Null with one clear line in `error` when it cannot be used
  /// (made by a newer version, locked, read-only, truncated, corrupted, not a plan store); nothing is overwritten.
  static std::shared_ptr<CPlanStore> Open(const PlanStoreOptions& options, QString* error);

  /// A store's address, sound or not, as anybody may read it: without a password or query.
  static QString ShownAddress(const QString& url);

  /// Number of the newest layout of the tables, which an open store has.
  static int LayoutVersion();

  /// Names of the configuration switches, in the order of the configuration record.
  static QStringList SwitchNames();

  /// Makes `user` the current user and raises the whole-tree event. False with a line in `error` for an unknown name.
  virtual bool LogIn(const QString& user, QString* error) = 0;
  /// The user a client without a log-in window takes: the first with all rights.
  virtual QString DefaultUser() const = 0;
  /// The store's own identity, made once with the store.
  std::string StationId() const override = 0;
  /// Code of the first plan visible to the current user with this exact name, by family, then code; empty when none.
  virtual std::string FindPlanByName(const QString& name) const = 0;
  /// Stops the feed and the database threads, within 3 s; later calls return false. Called by the last owner's end,
  /// too. False when the database holds a thread for longer: it ends by itself some time later, and a process that ends
  /// before that does so by _exit(), for the thread uses what static objects and the application hold.
  virtual bool Close() = 0;
};

}  // namespace TarnHost
