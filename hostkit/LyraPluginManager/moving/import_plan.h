#pragma once

#include "moving/import_report.h"
#include "moving/site_records.h"

namespace TarnHost::Moving {

/// The last numbers that were given out.
struct LastNumbers {
  int32_t code = 0, region = 0, camera = 0, user = 0;  // `code`: of groups and plans
};

/// What a store has before an import; plans have digests in the place of their content.
struct StandingSite {
  SiteRecords records;
  std::set<int32_t> kept_codes;  // of what was deleted and can still come back
  LastNumbers last;
  int64_t newest_change = 0;  // in the log of changes
};

template <class Record>
struct Saved {
  Record record;  // with the store's codes
  bool is_new = false;
};

/// What is to be written, what stood before first, and what is said of it.
struct ImportPlan {
  std::vector<Saved<UserRecord>> users;
  std::vector<Saved<UserGroupRecord>> user_groups;
  std::vector<Saved<RegionRecord>> regions;
  std::vector<Saved<CameraRecord>> cameras;
  std::vector<Saved<GroupRecord>> groups;
  std::vector<Saved<PlanRecord>> plans;
  LastNumbers last;  // afterwards
  CImportReport report;
};

}  // namespace TarnHost::Moving
