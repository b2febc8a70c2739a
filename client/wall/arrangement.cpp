#include "wall/arrangement.h"

#include <algorithm>

#include "MarUIControl/split_type_data.h"
#include "plan_rules/splits.h"
#include "plan_rules/window_content.h"
#include "plan_rules/window_edits.h"
#include "wall/same_pages.h"

namespace TarnClient {

using MarUIControl::struSplitTypeData;
using view_plugin_protocol::IsCamera;
using view_plugin_protocol::ShownIn;
using view_plugin_protocol::WindowsOfSplit;

namespace {

QVector<CArrangement::Page> InPlayOrder(const std::list<CArrangement::Page>& pages) {
  QVector<CArrangement::Page> ordered(pages.begin(), pages.end());
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const auto& one, const auto& other) { return one.page_no < other.page_no; });
  if (ordered.isEmpty()) {
    ordered.append(CArrangement::Page());
  }
  return ordered;
}

std::list<CArrangement::Page> ListOf(const QVector<CArrangement::Page>& pages) {
  return std::list<CArrangement::Page>(pages.begin(), pages.end());
}

int SplitFor(int cameras) {
  for (const int split : {struSplitTypeData::Split4, struSplitTypeData::Split9}) {
    if (cameras <= WindowsOfSplit(split)) {
      return split;
    }
  }
  return struSplitTypeData::Split16;
}

}  // namespace

CArrangement::CArrangement(const Plan& plan) : kind_(Kind::OfPlan), plan_(plan) {
  TakePages();
}

CArrangement CArrangement::WithoutPlan() {
  CArrangement arrangement;
  arrangement.kind_ = Kind::WithoutPlan;
  Page page;
  page.page_no = 1;
  page.split_type = struSplitTypeData::Split4;
  arrangement.plan_.pages = {page};
  arrangement.TakePages();
  return arrangement;
}

void CArrangement::TakePages() {
  pages_ = InPlayOrder(plan_.pages);
  seen_windows_.clear();
  for (const Page& page : qAsConst(pages_)) {
    seen_windows_.append(WindowsOfSplit(page.split_type));
  }
}

std::list<CArrangement::Page> CArrangement::PagesToSave() const {
  QVector<Page> left = pages_;
  for (int i = 0; i < left.size(); ++i) {
    const int in_sight = WindowsOfSplit(left[i].split_type);
    left[i].windows.remove_if([in_sight, seen = seen_windows_[i]](const Window& window) {
      return window.window_no > in_sight && window.window_no <= seen;
    });
  }
  const std::list<Page> pages = ListOf(left);
  if (SamePages(pages, ListOf(InPlayOrder(plan_.pages)))) {
    return plan_.pages;
  }
  return pages;
}

bool CArrangement::IsChanged() const {
  if (kind_ == Kind::WithoutPlan) {
    return std::any_of(pages_.begin(), pages_.end(), &HoldsSomething);
  }
  return HasPlan() && !SamePages(PagesToSave(), plan_.pages);
}

void CArrangement::Renew(const Plan& plan) {
  const bool keeps_windows = IsChanged() && !SamePages(ListOf(InPlayOrder(plan.pages)), PagesToSave());
  const std::list<Page> old_pages = plan_.pages;
  plan_ = plan;
  if (keeps_windows) {
    plan_.pages = old_pages;
  } else {
    TakePages();
  }
}

bool CArrangement::RestsOn(const Plan& plan) const {
  return HasPlan() && plan_.index_code == plan.index_code && SamePages(plan_.pages, plan.pages);
}

void CArrangement::Saved(const std::list<Page>& pages) {
  if (HasPlan()) {
    plan_.pages = pages;
  }
}

bool CArrangement::Rename(const NameOf& name_of) {
  bool is_changed = false;
  const auto rename = [&](Window& window) {
    const std::string name = name_of(window.resource_code);
    if (IsCamera(window) && !name.empty() && name != window.resource_name) {
      window.resource_name = name;
      is_changed = true;
    }
  };
  for (Page& page : pages_) {
    std::for_each(page.windows.begin(), page.windows.end(), rename);
  }
  for (Page& page : plan_.pages) {
    std::for_each(page.windows.begin(), page.windows.end(), rename);
  }
  return is_changed;
}

bool CArrangement::IsInSight(int page, int window_no) const {
  return page >= 0 && page < pages_.size() && window_no >= 1 && window_no <= WindowsOfSplit(pages_[page].split_type);
}

const CArrangement::Window* CArrangement::At(int page, int window_no) const {
  if (!IsInSight(page, window_no)) {
    return nullptr;
  }
  return view_plugin_protocol::ContentOf(pages_[page].windows, window_no);
}

int CArrangement::NextEmpty(int page, int after_window_no) const {
  if (page < 0 || page >= pages_.size()) {
    return 0;
  }
  const int windows = WindowsOfSplit(pages_[page].split_type);
  for (int step = 0; step < windows; ++step) {
    const int window_no = (after_window_no + step) % windows + 1;
    if (!At(page, window_no)) {
      return window_no;
    }
  }
  return 0;
}

bool CArrangement::Put(int page, int window_no, const WallCamera& camera) {
  return IsInSight(page, window_no) && view_plugin_protocol::PutIn(&pages_[page], window_no, camera.code, camera.name);
}

bool CArrangement::Swap(int page, int window_no, int other_window_no) {
  const bool both_empty = !At(page, window_no) && !At(page, other_window_no);
  if (window_no == other_window_no || both_empty || !IsInSight(page, window_no) || !IsInSight(page, other_window_no)) {
    return false;
  }
  view_plugin_protocol::SwapIn(&pages_[page], window_no, other_window_no);
  return true;
}

bool CArrangement::Empty(int page, int window_no) {
  if (!At(page, window_no)) {
    return false;
  }
  view_plugin_protocol::ClearIn(&pages_[page], window_no);
  return true;
}

bool CArrangement::Split(int page, int split_type) {
  if (page < 0 || page >= pages_.size() || pages_[page].split_type == split_type) {
    return false;
  }
  pages_[page].split_type = split_type;
  seen_windows_[page] = std::max(seen_windows_[page], WindowsOfSplit(split_type));
  return true;
}

bool CArrangement::SetStream(int page, int window_no, int stream_type) {
  if (!IsCamera(At(page, window_no)) || At(page, window_no)->stream_type == stream_type) {
    return false;
  }
  ShownIn(&pages_[page], window_no)->stream_type = stream_type;
  return true;
}

bool CArrangement::SetPreset(int page, int window_no, int preset_no) {
  if (!IsCamera(At(page, window_no)) || At(page, window_no)->preset_no == preset_no) {
    return false;
  }
  ShownIn(&pages_[page], window_no)->preset_no = preset_no;
  return true;
}

bool CArrangement::MakeRoomFor(int page, int cameras) {
  if (HasPlan() || IsNothing() || cameras <= WindowsOfSplit(pages_[page].split_type)) {
    return false;
  }
  return Split(page, SplitFor(cameras));
}

}  // namespace TarnClient
