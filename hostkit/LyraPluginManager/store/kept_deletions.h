#pragma once

#include <QString>
#include <map>
#include <optional>
#include <utility>

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// What was deleted and can still be taken back: the rows of a deletion, in tables of their own, where nothing that
/// reads plans and groups comes upon them. The content of plans stays where it is meanwhile. Everything runs in the
/// caller's transaction. Throws CStoreError. Thread: the engine's.
class CKeptDeletions {
 public:
  struct Deletion {
    int32_t code = 0;
    bool is_group = false;
    int32_t parent = 0, family = 0, owner = 0;
    QString name;
    int32_t user = 0;       // who deleted it
    int64_t at = 0;         // seconds since 1970 by that user's clock
    int32_t namesakes = 0;  // how many stood beside it then
  };

  explicit CKeptDeletions(CSqlEngine& engine) : engine_(engine) {}

  /// What goes with a group, on all levels below it.
  struct Below {
    int32_t groups = 0, plans = 0;
  };

  /// Keeps a row that is about to be deleted, with the default views that name it; a group with all below it. Who was
  /// let into a group stays noted for as long as it is kept.
  Below KeepGroup(int32_t code, int32_t user, int64_t at);
  void KeepPlan(int32_t code, int32_t user, int64_t at);

  std::optional<Deletion> Find(int32_t code, bool is_group);
  /// The deletion that took this plan along.
  std::optional<Deletion> OfPlan(int32_t plan);
  /// How many rows of its kind and name stand where it stood.
  int32_t NamesakesOf(const Deletion& deletion);
  /// Puts its rows, as far as they are kept, where they were, and the default views of users who have chosen no other
  /// one since.
  void PutBack(const Deletion& deletion);

  /// The user has chosen a default view; an earlier one does not come back.
  void ForgetDefaultView(int32_t user);
  /// Forgets what has been there for so many seconds since it was first found here: the clocks of those who deleted may
  /// be wrong. Of many rows a part each time, so that no one who only writes something else has to wait for all of
  /// them.
  void Purge(int64_t now, int64_t seconds);

 private:
  using Key = std::pair<int32_t, int64_t>;  // code and time of a deletion: a row may be deleted once more

  std::optional<Deletion> First(const QString& condition, const QVariantList& values);
  void Note(const char* table, int32_t code, int32_t user, int64_t at);
  std::optional<Key> Due(int64_t now, int64_t seconds);
  void ForgetSome(const Key& deletion);
  int ForgetSome(const char* table, int32_t deletion, int most);
  void ForgetRows(int32_t deletion);

  CSqlEngine& engine_;
  std::map<Key, int64_t> found_;  // when each was first found here, by this clock
};

}  // namespace TarnHost::Store
