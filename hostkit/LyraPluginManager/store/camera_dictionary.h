#pragma once

#include <unordered_map>
#include <vector>

#include "store/camera_names.h"
#include "store/plan_records.h"
#include "store/sql_engine.h"

namespace TarnHost::Store {

/// A row of "number, code, name".
NumberedCamera NumberedCameraFrom(const QSqlQuery& query);

/// The store's list of the cameras that plans name, by which a plan's row holds numbers instead of names: so no page is
/// read to find a plan by its cameras. A number is never given again. Throws CStoreError. Thread: the engine's.
class CCameraDictionary {
 public:
  /// What is read goes to `names`, where numbers are looked up, too; null for a single transaction.
  explicit CCameraDictionary(CSqlEngine& engine, CCameraNames* names = nullptr) : engine_(engine), names_(names) {}

  /// Sees to it that the cameras of a plan are known that others have written.
  void ReadFor(const PlanRow& plan);
  /// The store may be another one by now: reads all of it, to `names`.
  void ReadAgain();

  /// Begins a transaction that may write; what an earlier one wrote without being committed is forgotten.
  void Begin();
  /// The numbers of these cameras, each once, in their order, for a plan that has had `before`. New ones are written.
  std::vector<uint32_t> NumbersOf(const std::vector<NamedCamera>& cameras, const std::vector<uint32_t>& before = {});
  /// The transaction was committed.
  void Keep();

 private:
  void Refresh();
  uint32_t Known(const NamedCamera& camera) const;
  void Ask(CStoreFunctions* functions, const std::vector<NamedCamera>& cameras, const std::vector<uint32_t>& before);
  bool MayBeWritten(const NamedCamera& camera, const std::vector<uint32_t>& before) const;
  uint32_t NumberOf(const NamedCamera& camera);
  uint32_t Insert(const NamedCamera& camera);
  void Note(const NamedCamera& camera, uint32_t number);
  std::vector<NumberedCamera> After(uint32_t number);

  CSqlEngine& engine_;
  CCameraNames* const names_;
  uint32_t last_ = 0;                                // the highest number that was read
  std::unordered_map<std::string, uint32_t> added_;  // by KeyOf(), in this transaction
  std::vector<NumberedCamera> fresh_;                // the same, in their order
  bool is_current_ = false;                          // read in this transaction
};

}  // namespace TarnHost::Store
