#include "store/observer_hub.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QThread>
#include <algorithm>
#include <utility>

namespace TarnHost::Store {
namespace {

constexpr int kSliceMilliseconds = 4;

/// Whether both say that children of one kind came to one node. An observer reads the whole node again for each, so of
/// a thousand plans added in one go the last notice does; all of them would cost the square of it.
bool IsSameGrowth(const CObserverHub::Event& one, const CObserverHub::Event& next) {
  return one.param.event == ResourceData::RE_CHILD_ADDED && next.param.event == ResourceData::RE_CHILD_ADDED &&
         one.key == next.key && one.param.type == next.param.type;
}

bool IsPlanChange(const CObserverHub::Event& event) {
  return event.param.event == ResourceData::RE_NAME_CHANGED && event.param.type == ResourceData::RT_VIEW;
}

/// Whether an observer that gets `late` believes of the node what was true before `now`. A notice of growth does no
/// such harm: the node is read again for it.
bool IsOutdatedBy(const CObserverHub::Event& late, const CObserverHub::Event& now) {
  if (now.param.event == ResourceData::RE_CHILD_ADDED) {
    return late.param.event == ResourceData::RE_CHILD_REMOVED && late.param.type == now.param.type &&
           late.param.second == now.param.second;
  }
  return late.param.event == now.param.event && late.key == now.key;
}

}  // namespace

using ResourceData::IResourceObserver;

// A timer, not a posted event: the event loop handles events that are posted while it delivers posted events in the
// same turn, so a chain of them would keep the user's input waiting.
CObserverHub::CObserverHub(QObject* parent) : QObject(parent), timer_(new QTimer(this)) {
  timer_->setSingleShot(true);
  timer_->setInterval(0);
  connect(timer_, &QTimer::timeout, this, &CObserverHub::DeliverSome);
}

CObserverHub::~CObserverHub() = default;

void CObserverHub::Disposer::operator()(CObserverHub* hub) const {
  hub->Close();
  if (hub->thread() == QThread::currentThread() && !hub->delivering_) {
    delete hub;
  } else {
    hub->deleteLater();
  }
}

void CObserverHub::Register(IResourceObserver* observer, const Key& key) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (!closed_ && observer != nullptr) {
    observers_.Add(observer, key);
  }
}

void CObserverHub::Unregister(IResourceObserver* observer, const Key& key) {
  const std::lock_guard<std::mutex> lock(mutex_);
  observers_.Remove(observer, key);
}

void CObserverHub::Post(std::vector<Event> events) {
  const std::lock_guard<std::mutex> lock(mutex_);
  Schedule(std::move(events));
}

void CObserverHub::PostCorrections(std::vector<Event> events) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto is_needless = [this](const Event& now) {
    return std::none_of(events_.begin(), events_.end(), [&](const Event& late) { return IsOutdatedBy(late, now); });
  };
  events.erase(std::remove_if(events.begin(), events.end(), is_needless), events.end());
  Schedule(std::move(events));
}

// With the mutex held.
void CObserverHub::Schedule(std::vector<Event> events) {
  if (closed_ || events.empty()) {
    return;
  }
  for (Event& event : events) {
    if (IsPlanChange(event)) {
      ++waiting_changes_[event.key];
    }
    events_.push_back(std::move(event));
  }
  if (!std::exchange(scheduled_, true)) {
    QMetaObject::invokeMethod(timer_, QOverload<>::of(&QTimer::start), Qt::QueuedConnection);
  }
}

void CObserverHub::Close() {
  const std::lock_guard<std::mutex> lock(mutex_);
  closed_ = true;
  observers_.Clear();
  events_.clear();
  waiting_changes_.clear();
}

void CObserverHub::DeliverSome() {
  // An observer that runs an event loop of its own gets no second delivery into it: the order would be lost.
  if (delivering_) {
    return;
  }
  const QScopedValueRollback<bool> delivering(delivering_, true);
  QElapsedTimer clock;
  clock.start();
  Event event;
  while (TakeEvent(&event)) {
    Deliver(event);
    if (clock.hasExpired(kSliceMilliseconds)) {
      timer_->start();
      return;
    }
  }
}

bool CObserverHub::TakeEvent(Event* event) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (events_.empty()) {
    scheduled_ = false;
    return false;
  }
  do {
    *event = std::move(events_.front());
    events_.pop_front();
  } while (IsOutdated(*event) && !events_.empty());
  return true;
}

// With the mutex held, for the event that was just taken.
bool CObserverHub::IsOutdated(const Event& event) {
  if (!IsPlanChange(event)) {
    return !events_.empty() && IsSameGrowth(event, events_.front());
  }
  const auto waiting = waiting_changes_.find(event.key);
  const bool last = --waiting->second == 0;
  if (last) {
    waiting_changes_.erase(waiting);
  }
  return !last;
}

void CObserverHub::Deliver(const Event& event) {
  for (IResourceObserver* observer : ObserversOf(event.key)) {
    // An observer may remove others, or itself, while it is called.
    const auto still = ObserversOf(event.key);
    if (std::find(still.begin(), still.end(), observer) != still.end()) {
      observer->OnResourceUpdate(event.param);
    }
  }
}

std::vector<IResourceObserver*> CObserverHub::ObserversOf(const Key& key) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return observers_.Of(key);
}

}  // namespace TarnHost::Store
