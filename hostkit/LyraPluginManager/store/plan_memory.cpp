#include "store/plan_memory.h"

namespace TarnHost::Store {
namespace {

constexpr size_t kMostBytes = size_t{32} << 20;
constexpr size_t kWindowBytes = 256;  // about

size_t BytesOf(const StoredPlan& plan) {
  size_t windows = 1;
  for (const auto& page : plan.pages) {
    windows += page.windows.size();
  }
  return static_cast<size_t>(plan.thumbnail.size()) + windows * kWindowBytes;
}

}  // namespace

std::shared_ptr<const StoredPlan> CPlanMemory::Find(int32_t code) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = plans_.find(code);
  return found == plans_.end() ? nullptr : found->second.plan;
}

void CPlanMemory::Put(StoredPlan plan) {
  auto held = std::make_shared<const StoredPlan>(std::move(plan));
  const std::lock_guard<std::mutex> lock(mutex_);
  PutLocked(std::move(held));
}

void CPlanMemory::Renew(const StoredPlan& plan) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = plans_.find(plan.row.code);
  if (found != plans_.end() && found->second.plan->revision < plan.revision) {
    PutLocked(std::make_shared<const StoredPlan>(plan));
  }
}

void CPlanMemory::PutLocked(std::shared_ptr<const StoredPlan> plan) {
  const int32_t code = plan->row.code;
  const size_t bytes = BytesOf(*plan);
  RemoveLocked(code);
  if (plan->damage.IsEmpty()) {  // what is wrong with one is asked of the database
    plans_[code] = {std::move(plan), ages_.insert(ages_.end(), code), bytes};
    bytes_ += bytes;
    MakeRoom();
  }
}

void CPlanMemory::MakeRoom() {
  for (auto oldest = ages_.begin(); oldest != ages_.end() && bytes_ > kMostBytes;) {
    const int32_t code = *oldest++;
    if (kept_.count(code) == 0) {
      RemoveLocked(code);
    }
  }
}

void CPlanMemory::Remove(int32_t code) {
  const std::lock_guard<std::mutex> lock(mutex_);
  RemoveLocked(code);
}

void CPlanMemory::RemoveLocked(int32_t code) {
  const auto found = plans_.find(code);
  if (found != plans_.end()) {
    bytes_ -= found->second.bytes;
    ages_.erase(found->second.age);
    plans_.erase(found);
  }
}

void CPlanMemory::Keep(std::set<int32_t> codes) {
  const std::lock_guard<std::mutex> lock(mutex_);
  kept_ = std::move(codes);
  MakeRoom();
}

void CPlanMemory::Clear() {
  const std::lock_guard<std::mutex> lock(mutex_);
  plans_.clear();
  ages_.clear();
  bytes_ = 0;
}

CPlanMemory::DefaultView CPlanMemory::DefaultViewOf(int32_t user) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = default_views_.find(user);
  return found == default_views_.end() ? DefaultView() : found->second;
}

void CPlanMemory::SetDefaultViews(std::map<int32_t, DefaultView> views) {
  const std::lock_guard<std::mutex> lock(mutex_);
  default_views_ = std::move(views);
}

}  // namespace TarnHost::Store
