#include "WidgetKit/hit_list.h"

namespace WidgetKit {

void HitList::Clear() {
  *this = HitList();
}

void HitList::Set(const QVector<QModelIndex>& hits, int count) {
  const QModelIndex at = hits_.value(current_);
  hits_.clear();
  hits_.reserve(hits.size());
  for (const QModelIndex& hit : hits) {
    hits_.append(hit);
  }
  count_ = count;
  current_ = -1;
  if (at.isValid()) {
    current_ = hits.indexOf(at);
  }
}

QModelIndex HitList::Step(int by) {
  const int size = hits_.size();
  int at = current_ < 0 && by < 0 ? size : current_;
  for (int tried = 0; tried < size; ++tried) {
    at = ((at + by) % size + size) % size;
    if (hits_.at(at).isValid()) {
      current_ = at;
      return hits_.at(at);
    }
    by = by < 0 ? -1 : 1;
  }
  return {};
}

}  // namespace WidgetKit
