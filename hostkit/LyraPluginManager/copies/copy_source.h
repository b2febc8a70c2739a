#pragma once

#include <QString>
#include <QVariantList>
#include <set>
#include <vector>

#include "store/plan_records.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Rows as they go from a store into a copy.
struct TableRows {
  QString table, columns;  // names with commas between them
  std::vector<QVariantList> rows;
};

/// What of a store is not in a copy yet, as of one state.
struct CopyNews {
  int64_t change = 0;             // the newest one
  QString mark;                   // of the log up to there
  bool is_whole = false;          // the log does not say what else changed
  bool has_groups = false;        // those that the user sees are among the tables
  bool has_cameras = false;       // likewise
  std::vector<TableRows> tables;  // each stands in the place of what the copy has
  std::set<int32_t> withheld;     // with the cameras
  std::set<int32_t> changed_plans;
  QString station, hash;           // the site's; the user's, where the store itself keeps passwords
  std::vector<std::string> users;  // of the site
};

/// A plan that the user sees.
struct PlanVersion {
  int32_t code = 0, parent = 0;
  int64_t revision = 0;
  QString checksum;

  bool operator==(const PlanVersion& other) const {
    return code == other.code && parent == other.parent && revision == other.revision && checksum == other.checksum;
  }
};

/// Reads what one user sees of a store, and no password of a camera. Throws CStoreError. Thread: the engine's.
class CCopySource {
 public:
  CCopySource(CSqlEngine& store, int32_t user) : store_(store), user_(user) {}

  /// What was changed after `known`, where the log had this mark; -1 for a copy that has nothing.
  CopyNews News(int64_t known, const QString& mark);
  /// All plans in groups that the user sees.
  std::vector<PlanVersion> Plans(const std::set<int32_t>& groups);
  /// Those directly in these.
  std::vector<PlanVersion> PlansIn(const std::vector<int32_t>& parents, const std::set<int32_t>& groups);
  /// Rows of these plans, as far as the user sees them; kMostAtOnce at the most.
  TableRows PlanRows(const std::vector<int32_t>& codes, const std::set<int32_t>& groups);
  /// The cameras behind these numbers, likewise.
  TableRows CameraNames(const std::vector<int32_t>& numbers);

  static constexpr int kMostAtOnce = 200;

 private:
  TableRows Read(const char* table, const char* columns, const QString& rest = {}, const QVariantList& values = {});
  TableRows ReadAs(const char* table, const char* columns, const QString& selected, const QString& rest = {},
                   const QVariantList& values = {});
  std::vector<PlanVersion> VersionsOf(const QString& condition, const QVariantList& values,
                                      const std::set<int32_t>& groups);
  QString MarkOf(int64_t change);
  void AddSite(CopyNews* news);
  void AddCameras(CopyNews* news);
  void AddGroups(CopyNews* news);

  CSqlEngine& store_;
  const int32_t user_;
};

}  // namespace TarnHost::Store
