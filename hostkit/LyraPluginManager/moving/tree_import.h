#pragma once

#include <tuple>

#include "moving/import_codes.h"
#include "moving/import_plan.h"
#include "moving/user_import.h"

namespace TarnHost::Moving {

/// Which groups and plans come along, and where to. Pure. Thread: any.
class CTreeImport {
 public:
  /// How the cameras in windows are found: which code is which, of cameras of the site that the file is of.
  struct CamerasOfSite {
    const Codes& codes;
    const QString site;
  };

  CTreeImport(const StandingSite& here, bool is_same_site, ImportPlan* plan);

  /// Groups and plans have no code in common.
  void DropDoubles(SiteRecords* file);
  void TakeGroups(std::vector<GroupRecord> groups, const CUserImport& users);
  void TakePlans(std::vector<PlanRecord> plans, const CUserImport& users, const CamerasOfSite& cameras);

  const Codes& GroupCodes() const { return group_codes_; }
  const Codes& PlanCodes() const { return plan_codes_; }

 private:
  using Family = std::pair<int32_t, QString>;  // with the owner
  using Place = std::tuple<int32_t, Family, QString>;
  using Namesakes = std::vector<const PlanRecord*>;

  template <class Record>
  static Family FamilyOf(const Record& record) {
    return {record.family, record.owner};
  }
  /// Why it cannot be where the file has it; empty when it can.
  template <class Record>
  QString WhyNotIn(int32_t file_group, const Record& record, const CUserImport& users) const;
  QString WhyNot(const GroupRecord& group, const CUserImport& users) const;
  const GroupRecord* Known(const GroupRecord& group) const;
  void TakeGroup(const GroupRecord* known, GroupRecord group);
  void TakePlan(PlanRecord plan);
  void ChangePlan(const PlanRecord& known, PlanRecord plan);
  void TakeNamesake(const Namesakes& namesakes, const PlanRecord& plan);
  void AddPlan(PlanRecord plan);
  void MapCameras(const CamerasOfSite& cameras, PlanRecord* plan) const;
  std::string CodeOf(const std::string& camera, const CamerasOfSite& cameras) const;

  const bool is_same_site_;
  ImportPlan* const plan_;
  CGivenNumbers codes_;
  std::map<int32_t, const GroupRecord*> groups_;
  std::map<Place, const GroupRecord*> groups_by_place_;
  std::map<int32_t, Family> families_;        // of groups as they become
  std::map<int32_t, int32_t> group_parents_;  // likewise
  std::map<int32_t, const PlanRecord*> plans_;
  std::map<Place, Namesakes> plans_by_place_;
  Codes group_codes_ = {{0, 0}}, plan_codes_;
};

}  // namespace TarnHost::Moving
