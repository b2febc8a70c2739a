#pragma once

#include <QString>

#include "store/plan_repository.h"

namespace TarnHost::Store {

/// What these pages have that no plan can have, as the end of a sentence: an unknown split, a number below or beyond
/// what there is. Empty when all is well. Dwell times are as the one who saved them wants them.
CStoreText FaultOf(const std::list<view_plugin_protocol::PlanPage>& pages);

/// What proves that a plan's row is as it was written, with the revision that it was made for: an older program that
/// writes the row knows nothing of it. It vouches for what the plan plays, and apart from that for the rest; name and
/// place may be changed past the program without making the plan unfit to play.
QString ChecksumOf(const StoredPlan& plan, const QString& pages_text);

enum class Vouched { kYes, kUnknown, kRestChanged, kNo };
/// What `checksum` says of the plan as it was read.
Vouched CheckedBy(const QString& checksum, const StoredPlan& plan, const QString& pages_text);

/// Fills the pages from their text and finds out whether the row says what a plan can say; else sets `damage` to a
/// sentence that names the plan.
void TakePages(StoredPlan* plan, const QString& pages_text, const QString& checksum);

}  // namespace TarnHost::Store
