#pragma once

#include <string>

#include "LyraPluginManager/error_kind.h"
#include "LyraPluginManager/view_plugin_protocol.h"
#include "change_journal.h"
#include "row_record.h"

namespace TarnPlanView {

/// What a fetch of a node's children brought.
struct SubItems {
  bool ok = false;
  std::string error_info;
  int32_t error_kind = view_plugin_protocol::UnknownFailure;
  view_plugin_protocol::GetPlanGroupsResponse groups;
  view_plugin_protocol::GetPlansInGroupResponse plans;
  ChildRecords records;  // of all that came
};

/// Asks the host, on the calling thread.
SubItems FetchSubItems(const std::string& code, int type, bool with_plans);

/// Whether changes that came in during the fetch of the children of `code` make a difference to it: it would bring back
/// what was deleted, put a moved plan in its old place, or lack one that came in.
bool IsOvertaken(const SubItems& items, const std::string& code, const RecentChanges& changes);
/// The items that no change came to.
SubItems WhatStillHolds(const SubItems& items, const RecentChanges& changes);

/// What becomes of an answer.
enum class FetchStep {
  Finish,      // the answer is shown as it is, or why there is none
  AskAgain,    // at once
  ShowPartly,  // what still holds, and the rest later: a row does not wait for ever where changes never end
  AskLater,    // nothing is shown: there was no answer
  Drop         // nothing is shown, and nothing asked for any more
};

/// How far the fetching of one node's children has come.
struct FetchCourse {
  bool is_shown = false;  // what is fetched now was left out
  int fetches = 0;
  int repeats = 0;  // in succession, for want of an answer
};

/// Counts the answer in `course`. `has_row`: whether the row is still there, opened where something is shown already.
FetchStep StepAfter(const SubItems& items, bool is_overtaken, bool has_row, FetchCourse& course);

}  // namespace TarnPlanView
