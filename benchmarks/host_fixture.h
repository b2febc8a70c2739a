#pragma once

#include <QMap>
#include <QString>
#include <memory>

#include "TarnHost/plan_site.h"
#include "TarnHost/plan_store.h"

/// A running host over a store in memory, for the life of the object; shuts down in the client's order.
class HostFixture {
 public:
  /// `switches`: overrides by name. Ends the program with a message when the store cannot be made.
  HostFixture(const TarnHost::PlanSite& site, const QMap<QString, int>& switches);
  /// The same over any store.
  explicit HostFixture(const TarnHost::PlanStoreOptions& options);
  ~HostFixture();

  /// A fresh data manager, registered with the host and empty.
  void RestartPlugin();
  /// Runs the event loop until `done` is true; ends the program after a minute, or so many seconds.
  static void WaitFor(const std::function<bool()>& done, int seconds = 60);

 private:
  static void ReleaseManager();

  std::shared_ptr<TarnHost::CPlanStore> store_;
};
