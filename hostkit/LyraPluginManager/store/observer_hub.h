#pragma once

#include <QObject>
#include <QTimer>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

#include "ResourceData/resource_observer.h"
#include "store/node_observers.h"

namespace TarnHost::Store {

/// Brings events to the registered observers on the GUI thread, in the order in which they were posted.
///
/// Of neighbouring notices that children of one kind came to one node the last one is delivered, of the notices that
/// one plan has changed the last that waits: the plan is read again for it, which may take long.
/// A long row of events is delivered in short pieces between which the event loop runs. An event reaches who is
/// registered for its node when it is delivered. Thread: made on the GUI thread; Post() and the registration from any.
class CObserverHub : public QObject {
  Q_OBJECT
 public:
  using Key = CNodeObservers::Key;
  struct Event {
    Key key;
    ResourceData::IResourceObserver::Param param;
  };

  explicit CObserverHub(QObject* parent = nullptr);
  ~CObserverHub() override;

  /// Ends a hub from any thread, also from one of its own deliveries.
  struct Disposer {
    void operator()(CObserverHub* hub) const;
  };

  /// From now on, also for events that were posted before and not delivered yet.
  void Register(ResourceData::IResourceObserver* observer, const Key& key);
  void Unregister(ResourceData::IResourceObserver* observer, const Key& key);
  /// The observers get them later, from the event loop.
  void Post(std::vector<Event> events);
  /// After a change made here: posts those of the notices, which say how a node is now, that correct a notice still to
  /// be delivered, which says how it was before.
  void PostCorrections(std::vector<Event> events);
  bool IsObserved(const Key& key) const { return !ObserversOf(key).empty(); }
  /// Forgets all observers and events, for good.
  void Close();

 private:
  void Schedule(std::vector<Event> events);
  void DeliverSome();
  bool TakeEvent(Event* event);
  bool IsOutdated(const Event& event);
  void Deliver(const Event& event);
  std::vector<ResourceData::IResourceObserver*> ObserversOf(const Key& key) const;

  mutable std::mutex mutex_;
  CNodeObservers observers_;
  std::deque<Event> events_;
  std::map<Key, int> waiting_changes_;  // notices that a plan has changed, by plan
  bool scheduled_ = false, closed_ = false;
  bool delivering_ = false;  // GUI thread
  QTimer* timer_;
};

}  // namespace TarnHost::Store
