#pragma once

#include <QJsonObject>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "TarnHost/plan_store.h"
#include "desk_journal.h"

/// A desk that adds, renames, moves, reads, extends and deletes plans and groups at random, one call after the other,
/// and writes each into its journal. It opens the store again when it does not know what became of something that it
/// added. Thread: Run() on one of its own.
class CDeskWork {
 public:
  using Store = std::shared_ptr<TarnHost::CPlanStore>;

  /// `open` answers an open store with a user logged in, null when that cannot be had just now.
  CDeskWork(QString name, unsigned seed, std::function<Store()> open, CDeskJournal* journal);

  /// Works until Stop(); then says so in the journal.
  void Run();
  void Stop();
  /// The groups and plans that the desk shows, as it reads them level by level.
  static QJsonArray Tree(TarnHost::CPlanStore& store);

 private:
  struct Rows {
    std::vector<std::string> groups, plans;
  };
  enum class Outcome { kOk, kRefused, kUnknown };

  void OpenSession();
  void Work();
  void Pause();
  Rows Shown() const;
  int Random(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }
  const std::string& OneOf(const std::vector<std::string>& codes) { return codes[Random(int(codes.size()))]; }
  std::string SomePlan(const Rows& rows);
  QString NewName() { return QStringLiteral("%1.%2").arg(name_).arg(++names_); }

  template <class Response, class Call>
  Outcome Ask(QJsonObject question, Response* response, Call call);
  void AddPlan(const std::string& group);
  void AddGroup(const std::string& group);
  void RenameGroup(const std::string& group);
  void DeleteGroup(const std::string& group);
  void DeletePlan(const std::string& plan);
  std::optional<view_plugin_protocol::GetPlanDetailResponse> Read(const std::string& plan);
  using Edit = std::function<void(view_plugin_protocol::UpdatePlanRequest*, QJsonObject*)>;
  void Change(const char* what, const std::string& plan, const Edit& edit);
  void Rename(const std::string& plan);
  void Move(const std::string& plan, const std::string& group);
  void Append(const std::string& plan);

  const QString name_;
  std::mt19937 random_;
  const std::function<Store()> open_;
  CDeskJournal& journal_;
  Store store_;
  int names_ = 0;
  bool has_added_ = false;                  // in this session
  std::set<std::string> uncertain_groups_;  // of which the last change may stand or not
  std::atomic<bool> stopping_{false};
  std::mutex mutex_;
  std::condition_variable stop_;
};
