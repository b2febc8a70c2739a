#pragma once

#include <rapidcheck.h>

#include <QTime>
#include <functional>
#include <vector>

#include "plan_document.h"
#include "plan_records.h"

namespace TarnTest {

using TarnPlanView::CPlanDocument;
using TarnPlanView::DraftCamera;

/// What a save of the plan as it is now would send, in words.
inline std::string Saved(const CPlanDocument& document) {
  return Words(document.MakeUpdateRequest());
}

/// Anywhere: plans as newer versions and accidents may leave them. Storable: those that the store takes.
enum class RandomPlans { Anywhere, Storable };

inline PlanWindow RandomWindow(RandomPlans which) {
  const bool storable = which == RandomPlans::Storable;
  const int number = storable ? *rc::gen::inRange(0, 17) : *rc::gen::inRange(-1, 20);
  const int stream = storable ? *rc::gen::inRange(0, 1000) : *rc::gen::arbitrary<int>();
  return Window(number, *rc::gen::element<std::string>("", "7", "8"), *rc::gen::element(0, 1, 1, 9), stream,
                *rc::gen::inRange(0, 9));
}

inline std::list<PlanPage> RandomPages(RandomPlans which) {
  const bool storable = which == RandomPlans::Storable;
  std::list<PlanPage> pages;
  for (int count = *rc::gen::inRange(0, 5); count > 0; --count) {
    PlanPage page = Page(*rc::gen::inRange(storable ? 0 : -1, 6),
                         storable ? *rc::gen::element(1, 2, 4, 8) : *rc::gen::element(1, 2, 4, 8, 3, 0), {},
                         *rc::gen::element<std::string>("", "Page 2", "Hof \xc3\xa4"), *rc::gen::arbitrary<int>());
    for (int windows = *rc::gen::inRange(0, 20); windows > 0; --windows) {
      page.windows.push_back(RandomWindow(which));
    }
    pages.push_back(page);
  }
  return pages;
}

inline GetPlanDetailResponse RandomDetail(RandomPlans which) {
  GetPlanDetailResponse detail = Detail(RandomPages(which));
  detail.auto_run = *rc::gen::arbitrary<bool>();
  detail.start_time = *rc::gen::element<std::string>("00:00:00", "23:59:59", "07:30:00");
  detail.end_time = detail.auto_run ? "08:00:00" : *rc::gen::element<std::string>("08:00:00", "");
  return detail;
}

inline DraftCamera RandomCamera() {
  const QString code = *rc::gen::element<QString>("7", "8", "9", "");
  return {code, "camera " + code};
}

/// One edit of any kind, of a page and a window that may not be there.
inline void RandomEdit(CPlanDocument* document) {
  const auto any = [](int least, int end) { return *rc::gen::inRange(least, end); };
  const int page = any(-1, 6), window = any(-1, 18);
  const std::vector<std::function<void()>> edits = {
      [&] { document->SetName(*rc::gen::element<QString>("Night", "Nigh", "Day")); },
      [&] { document->SetGroup("13", "Gate", any(-1, 2)); },
      [&] { document->SetAutoRun(*rc::gen::arbitrary<bool>()); },
      [&] { document->SetTimes(QTime(any(0, 24), 0), QTime(8, 0)); },
      [&] { document->AddPage(page); },
      [&] { document->DuplicatePage(page); },
      [&] { document->RemovePage(page); },
      [&] { document->MovePage(page, any(-1, 6)); },
      [&] { document->SetSplit(page, *rc::gen::element(1, 2, 4, 8, 5)); },
      [&] { document->SetDwell(page, *rc::gen::arbitrary<int>()); },
      [&] { document->SwapWindows(page, window, any(-1, 18)); },
      [&] { document->ClearWindow(page, window); },
      [&] { document->ClearPage(page); },
      [&] { document->SetStream(page, window, any(0, 3)); },
      [&] { document->SetPreset(page, window, any(0, 9)); },
      [&] { document->Fill(page, window, QVector<DraftCamera>(any(0, 20), RandomCamera())); },
      [&] { document->PutCamera(page, window, RandomCamera()); }};
  edits[size_t(any(0, int(edits.size())))]();
}

}  // namespace TarnTest
