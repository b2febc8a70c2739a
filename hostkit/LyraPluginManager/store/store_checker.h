#pragma once

#include <QStringList>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "store/plan_repository.h"

namespace TarnHost::Store {

/// Goes through all rows of a store and says what cannot be right, a line each. Changes nothing. Throws CStoreError
/// when the store cannot be read at all. Thread: the engine's.
class CStoreChecker {
 public:
  explicit CStoreChecker(CSqlEngine& engine) : engine_(engine), repository_(engine) {}

  /// What was found, a line each; empty for a sound store.
  QStringList Run();
  /// What was looked at, for the last line.
  QString Summary() const;

 private:
  void Note(const QString& line) { findings_.append(line); }
  /// Runs one part; what cannot be read is a finding itself.
  void Try(const char* what, const std::function<void()>& part);
  void CheckFile();
  void ReadUsers();
  void CheckGroups();
  void CheckGroup(const GroupRow& group);
  int LevelOf(const GroupRow& group) const;
  void CheckPlans();
  void CheckPlan(const StoredPlan& plan, Vouched vouched);
  /// What groups and plans have in common. `what` names the row.
  template <class Row>
  void CheckPlace(const QString& what, const Row& row);
  template <class Row>
  void CheckParent(const QString& what, const Row& row);
  void CheckCameras(const QString& what, const StoredPlan& plan);
  void NoteUnknownCameras(const QString& what, const StoredPlan& plan);
  void CheckContents();
  void CheckName(const QString& what, const QString& name);
  void CheckDeletions();
  void CheckDefaultViews();
  void CheckRights();
  void CheckAudiences();
  void CheckUserGroups();
  void CheckCameras();
  void CheckRegions(const char* kind, const char* lost_rows);
  void CheckCounters();

  CSqlEngine& engine_;
  CPlanRepository repository_;
  QStringList findings_;
  CCameraNames camera_names_{[](const std::string& name) { return name; }};
  std::set<std::string> site_cameras_;  // codes
  std::map<int32_t, GroupRow> groups_;
  std::map<int32_t, QString> users_;
  std::map<int32_t, int> plan_codes_;
  int32_t highest_code_ = 0;
  int deletions_ = 0;
};

}  // namespace TarnHost::Store
