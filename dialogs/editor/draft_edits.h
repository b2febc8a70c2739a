#pragma once

#include <QVector>

#include "plan_draft.h"
#include "plan_rules/window_edits.h"

namespace TarnPlanView {

// Edits of a draft's pages and windows, which know nothing of undo. Thread: any.

DraftPage EmptyPage();
/// A new page with this one's split, where that is a known one, and dwell time.
DraftPage NeighbourOf(const DraftPage& page);
/// By their order. A page that is only called after its number goes by the new one.
void NumberPages(QVector<DraftPage>* pages);

/// Over what is there; the same camera keeps its stream and preset.
void PutIn(DraftPage* page, int window_no, const DraftCamera& camera);

/// What became of cameras that were to fill a plan.
struct PlanFilling {
  int placed = 0, left_out = 0;
  int pages = 0;              // that took some of them
  int new_pages = 0;          // of these
  bool beyond_first = false;  // some are on another page than the one it began on
  bool out_of_pages = false;  // else what was left out found the plan full
};

/// Puts the cameras, in order, into empty windows from this one on: those of the page, those of the pages after it, and
/// then those of new pages like it after the last, as long as the plan may have more. What is filled stays as it is.
PlanFilling FillPlan(PlanDraft* draft, int page, int first_window, const QVector<DraftCamera>& cameras);

}  // namespace TarnPlanView
