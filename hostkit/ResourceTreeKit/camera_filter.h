#pragma once

#include <QBasicTimer>
#include <QObject>
#include <memory>
#include <vector>

#include "ResourceTreeKit/camera_content.h"
#include "ResourceTreeKit/camera_rows.h"

namespace ResourceTreeKit {

/// Finds the rows of a content whose name holds a text, in slices of at most 8 ms between which events go on.
/// What is above a hit stays, and what is below a region that hits. Thread: GUI.
class CCameraFilter : public QObject {
  Q_OBJECT
 public:
  using QObject::QObject;

  /// Ends what was looked for before. An empty text is answered in the next turn of the event loop, too.
  void Start(std::shared_ptr<const CCameraContent> content, const QString& text);
  void Stop();
  bool IsRunning() const { return timer_.isActive(); }

 Q_SIGNALS:
  /// `open` names the regions with hits below them.
  void Finished(const ResourceTreeKit::CCameraRows& rows, const std::vector<int>& open);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  enum Mark : char { kNo, kBelowHit, kHit };

  void MarkSome();
  Mark MarkOf(const CCameraContent::Node& node) const;
  void Finish();

  std::shared_ptr<const CCameraContent> content_;
  QString folded_;
  std::vector<char> marks_;  // one a row looked at so far
  QBasicTimer timer_;
};

}  // namespace ResourceTreeKit
