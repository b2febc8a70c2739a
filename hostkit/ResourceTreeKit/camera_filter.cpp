#include "ResourceTreeKit/camera_filter.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <utility>

namespace ResourceTreeKit {

namespace {

constexpr int kSliceMs = 6;
constexpr int kRowsBetweenLooks = 128;

}  // namespace

void CCameraFilter::Start(std::shared_ptr<const CCameraContent> content, const QString& text) {
  content_ = std::move(content);
  folded_ = CCameraContent::Folded(text);
  marks_.clear();
  marks_.reserve(content_->Nodes().size());
  marks_.push_back(folded_.isEmpty() ? kBelowHit : kNo);
  timer_.start(0, this);
}

void CCameraFilter::Stop() {
  timer_.stop();
  content_.reset();
}

void CCameraFilter::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) {
    QObject::timerEvent(event);
    return;
  }
  QElapsedTimer slice;
  slice.start();
  while (marks_.size() < content_->Nodes().size() && slice.elapsed() < kSliceMs) {
    MarkSome();
  }
  if (marks_.size() == content_->Nodes().size()) {
    Finish();
  }
}

void CCameraFilter::MarkSome() {
  const size_t end = qMin(content_->Nodes().size(), marks_.size() + kRowsBetweenLooks);
  for (size_t at = marks_.size(); at < end; ++at) {
    marks_.push_back(MarkOf(content_->Nodes()[at]));
  }
}

// A row comes after the one above it, so that one's mark is known.
CCameraFilter::Mark CCameraFilter::MarkOf(const CCameraContent::Node& node) const {
  if (!folded_.isEmpty() && node.folded.contains(folded_)) {
    return kHit;
  }
  if (marks_[static_cast<size_t>(node.parent)] != kNo) {
    return kBelowHit;
  }
  return kNo;
}

void CCameraFilter::Finish() {
  timer_.stop();
  std::vector<char> open(marks_.size(), 0);
  std::vector<int> opened;
  for (size_t at = marks_.size() - 1; at > 0; --at) {
    const bool is_found_region = marks_[at] == kHit && content_->Nodes()[at].child_count > 0;
    if (open[at] || is_found_region) {
      opened.push_back(static_cast<int>(at));
    }
    if (open[at] || marks_[at] == kHit) {
      open[static_cast<size_t>(content_->Nodes()[at].parent)] = 1;
    }
    marks_[at] = open[at] || marks_[at] != kNo;
  }
  const std::shared_ptr<const CCameraContent> content = std::exchange(content_, nullptr);
  Q_EMIT Finished(CCameraRows(*content, marks_), opened);
}

}  // namespace ResourceTreeKit
