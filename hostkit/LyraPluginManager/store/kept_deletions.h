#pragma once

#include <QString>
#include <chrono>
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
  using SteadyTime = std::chrono::steady_clock::time_point;

  /// By the clock that users see and set, in seconds since 1970, and by one that no one sets.
  struct Moment {
    int64_t at = 0;
    SteadyTime steady;
  };

  struct Deletion {
    int32_t code = 0;
    bool is_group = false;
    int32_t parent = 0, family = 0, owner = 0;
    QString name;
    int32_t user = 0;       // who deleted it
    int64_t at = 0;         // seconds since 1970 by that user's clock
    int32_t namesakes = 0;  // how many stood beside it then, or have come back since that did
  };

  explicit CKeptDeletions(CSqlEngine& engine) : engine_(engine) {}

  /// What goes with a group, on all levels below it.
  struct Below {
    int32_t groups = 0, plans = 0;
  };

  /// Keeps a row that is about to be deleted, with the default views that name it; a group with all below it. Who was
  /// let into a group stays noted for as long as it is kept.
  Below KeepGroup(int32_t code, int32_t user, const Moment& now);
  void KeepPlan(int32_t code, int32_t user, const Moment& now);

  std::optional<Deletion> Find(int32_t code, bool is_group);
  /// The deletion that took this plan along.
  std::optional<Deletion> OfPlan(int32_t plan);
  /// Of what was deleted elsewhere only the clocks' times are known.
  std::chrono::seconds AgeOf(const Deletion& deletion, const Moment& now) const;
  /// How many rows of its kind and name stand where it stood.
  int32_t NamesakesOf(const Deletion& deletion);
  /// It comes back, and some that stood beside it were deleted later and are kept still: these may stand beside it
  /// again. Those of before have counted it.
  void CountWithKept(const Deletion& deletion);
  /// Puts its rows, as far as they are kept, where they were, and the default views of users who have chosen no other
  /// one since.
  void PutBack(const Deletion& deletion);

  /// The user has chosen a default view; an earlier one does not come back.
  void ForgetDefaultView(int32_t user);
  /// Forgets what has been there for so long since it was first found here: the clocks of those who deleted may be
  /// wrong. At once what the log of changes shows to be old, for no client may run for so long. Of many rows a part
  /// each time, so that no one who only writes something else has to wait for all of them.
  void Purge(SteadyTime now, std::chrono::seconds age);

 private:
  using Key = std::pair<int32_t, int64_t>;  // code and time of a deletion: a row may be deleted once more

  struct Found {
    SteadyTime since;
    bool is_own;  // deleted here, and then
  };

  std::optional<Deletion> First(const QString& condition, const QVariantList& values);
  Below KeepByFunction(CStoreFunctions* functions, int32_t code, bool is_group, int32_t user, const Moment& now);
  QString AllDeletions() const;
  void Note(const char* table, int32_t code, int32_t user, const Moment& now);
  void LookAround(SteadyTime now);
  std::optional<Key> Due(SteadyTime now, std::chrono::seconds age);
  std::optional<Key> FarBehind();
  void ForgetSome(const Key& deletion);
  int ForgetSome(const char* table, int32_t deletion, int most);
  void ForgetRows(int32_t deletion);

  CSqlEngine& engine_;
  std::map<Key, Found> found_;
  bool has_old_ = true;  // as far as is known
};

}  // namespace TarnHost::Store
