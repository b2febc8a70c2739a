#pragma once

#include <QString>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "TarnHost/secret.h"
#include "copies/copy_file.h"
#include "copies/copy_source.h"
#include "copies/copy_writer.h"

namespace TarnHost::Store {

/// Whose copy it is.
struct CopyOwner {
  QString user;
  int32_t user_id = 0;
  bool is_bound = false;
  CSecret password;  // that the server has taken; of no use where the store keeps passwords itself
};

/// Runs work on the store's own connection and waits for its end; throws what that throws. The work may outlive the
/// wait.
using RunOnStore = std::function<void(const std::function<void(CSqlEngine&)>& work)>;

/// Brings one user's copy up to what the store is now, or makes it. What is in the copy already is not read again; of
/// all that is missing a part at a time is held in memory, and others read in between. Throws CStoreError; then the
/// copy is what it was. Thread: one, not the GUI's.
class CCopyUpdate {
 public:
  /// Once `stopped`, nothing more is begun.
  CCopyUpdate(RunOnStore run, CopyOwner owner, QDateTime now, const std::atomic<bool>& stopped);

  struct Result {
    int64_t change = -1;  // up to which the copy is true
    std::vector<std::string> users;
  };
  Result Run(const QString& path);
  /// The same of a copy that was brought up for this owner before, without what takes long unless it is to be made
  /// again.
  Result RunAgain(const QString& path);
  /// Makes none in any case.
  Result RunAtOnce(const QString& path);

 private:
  Result Renew(CSqlEngine& copy, CopyFacts facts);
  Result Make(const QString& path);
  void BringAlong(CCopyWriter& writer, CopyFacts* facts);
  void TakeTables(CCopyWriter& writer, CopyFacts* facts, const CopyNews& news);
  void TakePlans(CCopyWriter& writer, const CopyNews& news, const std::set<int32_t>& before);
  void Fetch(CCopyWriter& writer, const std::vector<int32_t>& codes);
  void TakeCameraNames(CCopyWriter& writer, bool has_groups);
  std::vector<int32_t> PlansIn(const std::vector<int32_t>& groups);
  std::vector<int32_t> OtherPlans(CCopyWriter& writer);
  QString HashOf(const QString& known) const;
  void RequireWanted() const;
  /// Answers work(source) of the store.
  template <class Work>
  auto Ask(Work work) {
    RequireWanted();
    const auto answer = std::make_shared<std::optional<decltype(work(std::declval<CCopySource&>()))>>();
    run_([answer, work, owner = owner_](CSqlEngine& store) {
      RequireOwner(store, owner);
      CCopySource source(store, owner.user_id);
      *answer = work(source);
    });
    return std::move(**answer);
  }
  /// The desk may have gone over to another user meanwhile.
  static void RequireOwner(const CSqlEngine& store, const CopyOwner& owner);

  const RunOnStore run_;
  const CopyOwner owner_;
  const QDateTime now_;
  const std::atomic<bool>& stopped_;
  bool is_hash_known_ = false, is_in_place_ = false;
  size_t fetched_ = 0;        // plans
  std::set<int32_t> groups_;  // that the user sees
  std::vector<std::string> users_;
  QString store_hash_;
};

}  // namespace TarnHost::Store
