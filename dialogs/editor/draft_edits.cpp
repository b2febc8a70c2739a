#include "draft_edits.h"

#include "MarUIControl/split_type_data.h"
#include "MarUIControl/string_conversion.h"

namespace TarnPlanView {

using MarUIControl::QStringToString;
using MarUIControl::struSplitTypeData;
using view_plugin_protocol::PlanPage;

namespace {

std::string NameAfter(int page_no) {
  return "Page " + std::to_string(page_no);
}

// How many of the cameras, from the first on, found an empty window.
int FillPage(PlanDraft* draft, int page, int first_window, const QVector<DraftCamera>& cameras) {
  int placed = 0;
  const int windows = WindowsOfSplit(draft->pages[page].split_type);
  for (int window_no = first_window; window_no <= windows && placed < cameras.size(); ++window_no) {
    if (!draft->Window(page, window_no)) {
      PutIn(&draft->pages[page], window_no, cameras[placed++]);
    }
  }
  return placed;
}

}  // namespace

DraftPage EmptyPage() {
  PlanPage page;
  page.page_no = 1;
  page.split_type = struSplitTypeData::Split4;
  page.dwell_seconds = kDefaultDwellSeconds;
  return DraftPage(page);
}

DraftPage NeighbourOf(const DraftPage& page) {
  DraftPage neighbour = EmptyPage();
  if (IsKnownSplit(page.split_type)) {
    neighbour.split_type = page.split_type;
  }
  neighbour.dwell_seconds = qBound(kMinDwellSeconds, page.dwell_seconds, kMaxDwellSeconds);
  neighbour.seen_windows = WindowsOfSplit(neighbour.split_type);
  return neighbour;
}

void NumberPages(QVector<DraftPage>* pages) {
  for (int i = 0; i < pages->size(); ++i) {
    DraftPage& page = (*pages)[i];
    if (page.name == NameAfter(page.page_no)) {
      page.name = NameAfter(i + 1);
    }
    page.page_no = i + 1;
    page.place = i;
  }
}

void PutIn(DraftPage* page, int window_no, const DraftCamera& camera) {
  PutIn(page, window_no, QStringToString(camera.index_code), QStringToString(camera.name));
}

PlanFilling FillPlan(PlanDraft* draft, int page, int first_window, const QVector<DraftCamera>& cameras) {
  const DraftPage neighbour = NeighbourOf(draft->pages[page]);
  const int room = qBound(0, kMaxFilledWindows - draft->FilledWindows(), cameras.size());
  const int first_page = page;
  PlanFilling filling;
  for (; filling.placed < room; ++page, first_window = 1) {
    if (page == draft->pages.size() && page >= kMaxPages) {
      filling.out_of_pages = true;
      break;
    }
    if (page == draft->pages.size()) {
      draft->pages.append(neighbour);
      ++filling.new_pages;
    }
    const int placed = FillPage(draft, page, first_window, cameras.mid(filling.placed, room - filling.placed));
    filling.placed += placed;
    if (placed > 0) {
      ++filling.pages;
      filling.beyond_first |= page != first_page;
    }
  }
  filling.left_out = cameras.size() - filling.placed;
  if (filling.new_pages > 0) {
    NumberPages(&draft->pages);
  }
  return filling;
}

}  // namespace TarnPlanView
