#pragma once

#include <QObject>
#include <functional>
#include <memory>

namespace TarnPlanView {

/// Waits on a pool thread until the host has downloaded its plan data.
///
/// There is no time limit: the wait ends when the data is there, when Stop() is called, when the application quits or
/// when this object dies. The pool thread is lent back while it waits. Thread: GUI.
class CDownloadPoll : public QObject {
  Q_OBJECT
 public:
  explicit CDownloadPoll(QObject* parent);
  ~CDownloadPoll() override;

  /// Starts a wait and retires an older one. `finished` is called once, on the GUI thread, unless it is stopped.
  void Start(std::function<void()> finished);
  void Stop();

 private:
  class State;
  std::shared_ptr<State> state_;
};

}  // namespace TarnPlanView
