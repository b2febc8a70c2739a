#include "store/camera_dictionary.h"

#include <algorithm>

#include "store/store_functions.h"
#include "store/text_rules.h"

namespace TarnHost::Store {

NumberedCamera NumberedCameraFrom(const QSqlQuery& query) {
  return {query.value(0).toUInt(), {query.value(1).toString().toStdString(), query.value(2).toString().toStdString()}};
}

std::vector<NumberedCamera> CCameraDictionary::After(uint32_t number) {
  std::vector<NumberedCamera> cameras;
  engine_.ForEach("SELECT number, code, name FROM camera_name WHERE number > ? ORDER BY number", {qint64(number)},
                  [&cameras](const QSqlQuery& query) { cameras.push_back(NumberedCameraFrom(query)); });
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

// To find out which of all names a user may read, a server would have to look at all plans.
void CCameraDictionary::ReadFor(const PlanRow& plan) {
  if (names_->HasAll(plan.cameras)) {
    return;
  }
  if (CStoreFunctions* functions = engine_.Functions()) {
    names_->Add(functions->CamerasOf(plan.code));
  } else {
    Refresh();
  }
}

void CCameraDictionary::ReadAgain() {
  const std::vector<NumberedCamera> cameras = After(0);
  last_ = 0;
  if (!cameras.empty()) {
    last_ = cameras.back().number;
  }
  names_->Replace(cameras);
}

void CCameraDictionary::Begin() {
  added_.clear();
  fresh_.clear();
  is_current_ = false;
}

std::vector<uint32_t> CCameraDictionary::NumbersOf(const std::vector<NamedCamera>& cameras,
                                                   const std::vector<uint32_t>& before) {
  std::vector<NamedCamera> stored;
  for (const NamedCamera& camera : cameras) {
    // As it is read again: bytes that are no text come back as others.
    stored.push_back({ToQt(camera.code).toStdString(), ToQt(camera.name).toStdString()});
  }
  if (CStoreFunctions* functions = engine_.Functions()) {
    Ask(functions, stored, before);
  }
  std::vector<uint32_t> numbers;
  numbers.reserve(cameras.size());
  for (const NamedCamera& camera : stored) {
    const uint32_t number = NumberOf(camera);
    if (std::find(numbers.begin(), numbers.end(), number) == numbers.end()) {
      numbers.push_back(number);
    }
  }
  return numbers;
}

uint32_t CCameraDictionary::Known(const NamedCamera& camera) const {
  if (const auto added = added_.find(KeyOf(camera)); added != added_.end()) {
    return added->second;
  }
  return names_ == nullptr ? 0 : names_->NumberOf(camera);
}

// All at once. What was asked for once is good for the whole transaction.
void CCameraDictionary::Ask(CStoreFunctions* functions, const std::vector<NamedCamera>& cameras,
                            const std::vector<uint32_t>& before) {
  std::vector<NamedCamera> asked;
  for (const NamedCamera& camera : cameras) {
    if (!MayBeWritten(camera, before)) {
      asked.push_back(camera);
    }
  }
  if (asked.empty()) {
    return;
  }
  const std::vector<uint32_t> numbers = functions->NumbersOf(asked);
  for (size_t place = 0; place < asked.size(); ++place) {
    Note(asked[place], numbers[place]);
  }
}

// A user writes no number into a plan that was not there and that he has not asked for, or he could read the names of
// all by writing all numbers.
bool CCameraDictionary::MayBeWritten(const NamedCamera& camera, const std::vector<uint32_t>& before) const {
  const uint32_t number = Known(camera);
  const bool is_bound = engine_.BoundUser() && added_.count(KeyOf(camera)) == 0;
  return number != 0 && (!is_bound || std::find(before.begin(), before.end(), number) != before.end());
}

uint32_t CCameraDictionary::NumberOf(const NamedCamera& camera) {
  if (!is_current_ && engine_.Functions() == nullptr) {
    Refresh();
    is_current_ = true;
  }
  const uint32_t known = Known(camera);
  return known != 0 ? known : Insert(camera);
}

uint32_t CCameraDictionary::Insert(const NamedCamera& camera) {
  const uint32_t number = last_ + static_cast<uint32_t>(fresh_.size()) + 1;
  engine_.Execute("INSERT INTO camera_name (number, code, name) VALUES (?, ?, ?)",
                  {qint64(number), ToQt(camera.code), ToQt(camera.name)});
  Note(camera, number);
  return number;
}

void CCameraDictionary::Note(const NamedCamera& camera, uint32_t number) {
  added_.emplace(KeyOf(camera), number);
  fresh_.push_back({number, camera});
}

// The next look reads them once more, which does no harm.
void CCameraDictionary::Keep() {
  if (names_ != nullptr) {
    names_->Add(fresh_);
  }
  Begin();
}

}  // namespace TarnHost::Store
