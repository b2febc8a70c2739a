#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

#include "TarnHost/plan_store.h"
#include "store/answering.h"
#include "store/store_error.h"

namespace TarnHost::Store {

/// What keeps a store from following and saving changes: from all that its threads find out, the one trouble that a
/// user should know of. Thread: any.
class CStoreTroubles {
 public:
  using Report = std::function<void(StoreTrouble trouble, const QString& line)>;

  /// `report` is called, on the thread that found out, when the trouble begins, becomes another or is over.
  CStoreTroubles(std::shared_ptr<const CAnswering> answering, Report report);

  /// What a look at the store found; empty when all was well.
  void OnLook(const std::optional<CStoreError>& trouble);
  /// How a change ended; empty when it is saved. Only a refusal that meets every other change, too, is a trouble.
  void OnChange(const std::optional<CStoreError>& refusal);
  /// Whether it is a change that was refused, so that only another one shows when it is over.
  bool IsOfChange() const;
  /// The store stopped answering, or answers again.
  void OnAnswering() { ReportNews(); }

 private:
  std::optional<CStoreError> Present() const;
  void ReportNews();

  const std::shared_ptr<const CAnswering> answering_;
  const Report report_;
  mutable std::mutex mutex_;
  std::optional<CStoreError> of_look_, of_change_;
  QString reported_;
};

}  // namespace TarnHost::Store
