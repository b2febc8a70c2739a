#include "store/camera_dictionary.h"

#include <algorithm>

#include "store/text_rules.h"

namespace TarnHost::Store {

std::vector<NumberedCamera> CCameraDictionary::After(uint32_t number) {
  std::vector<NumberedCamera> cameras;
  engine_.ForEach(
      "SELECT number, code, name FROM camera_name WHERE number > ? ORDER BY number", {qint64(number)},
      [&cameras](const QSqlQuery& query) {
        cameras.push_back({query.value(0).toUInt(),
                           {query.value(1).toString().toStdString(), query.value(2).toString().toStdString()}});
      });
  return cameras;
}

void CCameraDictionary::Refresh() {
  const std::vector<NumberedCamera> cameras = After(last_);
  if (cameras.empty()) {
    return;
  }
  last_ = cameras.back().number;
  if (names_ != nullptr) {
    names_->Add(cameras);
    return;
  }
  for (const auto& [number, camera] : cameras) {
    added_.emplace(KeyOf(camera), number);
  }
}

void CCameraDictionary::ReadAgain() {
  last_ = 0;
  if (names_ != nullptr) {
    names_->Clear();
  }
  Refresh();
}

void CCameraDictionary::Begin() {
  added_.clear();
  fresh_.clear();
  is_current_ = false;
}

std::vector<uint32_t> CCameraDictionary::NumbersOf(const std::vector<NamedCamera>& cameras) {
  std::vector<uint32_t> numbers;
  numbers.reserve(cameras.size());
  for (const NamedCamera& camera : cameras) {
    const uint32_t number = NumberOf(camera);
    if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

uint32_t CCameraDictionary::NumberOf(const NamedCamera& camera) {
  if (!is_current_) {
    Refresh();
    is_current_ = true;
  }
  if (const auto known = added_.find(KeyOf(camera)); known != added_.end()) {
    return known->second;
  }
  const uint32_t known = names_ == nullptr ? 0 : names_->NumberOf(camera);
  return known != 0 ? known : Insert(camera);
}

uint32_t CCameraDictionary::Insert(const NamedCamera& camera) {
  const uint32_t number = last_ + static_cast<uint32_t>(fresh_.size()) + 1;
  engine_.Execute("INSERT INTO camera_name (number, code, name) VALUES (?, ?, ?)",
                  {qint64(number), ToQt(camera.code), ToQt(camera.name)});
  added_.emplace(KeyOf(camera), number);
  fresh_.push_back({number, camera});
  return number;
}

// The next look reads them once more, which does no harm.
void CCameraDictionary::Keep() {
  if (names_ != nullptr) {
    names_->Add(fresh_);
  }
  Begin();
}

}  // namespace TarnHost::Store
