#pragma once

namespace TarnPlanView {

/// Data roles of the plan tree's rows. The numbers are shared with the host's tree control.
enum PlanItemRole {
  ItemMarkRole = 378,        ///< bool, read by the host's tree control.
  GroupMarkRole = 581,       ///< bool, groups; the host's tree control shows an expander.
  ItemTypeRole = 657,        ///< int, an ItemType.
  GroupLoadedRole = 660,     ///< bool, roots and groups: children were asked for.
  PlanIndexCodeRole = 661,   ///< QString, plans: the code.
  SearchTextRole = 665,      ///< QString, search hits: the text to highlight.
  GroupIndexCodeRole = 666,  ///< QString, roots, placeholder and groups: the code.
  ItemRecordRole = 669,      ///< PlanGroup or PlanBasicInfo, as it was when the row was made.
  IsGroupRole = 670,         ///< bool: a root or a group.
  PlanTypeRole = 671,        ///< int, plans: family of the record.
  GroupTypeRole = 672,       ///< int, groups: family of the record.
  PlayingRole = 673,         ///< bool, plans: it carries the playing mark.
  CurrentRecordRole = 674,   ///< PlanBasicInfo, plans: as the last change has it.
};

/// Codes of what is no group or plan of the service: the three roots, and the row that stands for "nothing".
///@{
constexpr char kPublicRootCode[] = "-1";
constexpr char kOwnRootCode[] = "-2";
constexpr char kPlaceholderCode[] = "-3";
constexpr char kReceivedRootCode[] = "-4";
///@}
/// Parent code of the top level in requests.
constexpr char kTopLevelCode[] = "root";

}  // namespace TarnPlanView
