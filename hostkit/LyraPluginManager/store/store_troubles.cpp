#include "store/store_troubles.h"

#include <utility>

#include "marlog/marlog.h"

namespace TarnHost::Store {
namespace {

StoreTrouble TroubleOf(const CStoreError& error) {
  if (error.IsSilence()) {
    return StoreTrouble::kNotAnswering;
  }
  switch (error.GetKind()) {
    case CStoreError::kConnectionLost:
      return StoreTrouble::kConnectionLost;
    case CStoreError::kBusy:
      return StoreTrouble::kLocked;
    case CStoreError::kReadOnly:
      return StoreTrouble::kReadOnly;
    case CStoreError::kNoRoom:
      return StoreTrouble::kNoRoom;
    default:
      return StoreTrouble::kOther;
  }
}

bool MeetsEveryChange(CStoreError::Kind kind) {
  return kind == CStoreError::kBusy || kind == CStoreError::kReadOnly || kind == CStoreError::kNoRoom;
}

}  // namespace

CStoreTroubles::CStoreTroubles(std::shared_ptr<const CAnswering> answering, Report report)
    : answering_(std::move(answering)), report_(std::move(report)) {}

void CStoreTroubles::OnLook(const std::optional<CStoreError>& trouble) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (of_look_ && !trouble) {
      of_change_.reset();  // the store is another one than that which refused it
    }
    of_look_ = trouble;
  }
  ReportNews();
}

void CStoreTroubles::OnChange(const std::optional<CStoreError>& refusal) {
  if (refusal && !MeetsEveryChange(refusal->GetKind())) {
    return;
  }
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    of_change_ = refusal;
  }
  ReportNews();
}

bool CStoreTroubles::IsOfChange() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return of_change_ && !of_look_;
}

// With the mutex held.
std::optional<CStoreError> CStoreTroubles::Present() const {
  if (answering_->IsStuck() && !(of_look_ && of_look_->GetKind() == CStoreError::kConnectionLost)) {
    return CStoreError::NotAnswering();
  }
  return of_look_ ? of_look_ : of_change_;
}

// Looks at everything with the mutex held: of two threads the later one reports what is true by then.
void CStoreTroubles::ReportNews() {
  const std::lock_guard<std::mutex> lock(mutex_);
  const std::optional<CStoreError> trouble = Present();
  const QString line = trouble ? trouble->Text().Shown() : QString();
  if (line == std::exchange(reported_, line)) {
    return;
  }
  if (trouble) {
    marlog::Write("LyraClientError", marlog::Error, "[%s(%d)] [0x%08x] - %s", "TarnHost::Store::CStoreTroubles",
                  __LINE__, 0U, qUtf8Printable(trouble->LogText()));
  }
  report_(trouble ? TroubleOf(*trouble) : StoreTrouble::kNone, line);
}

}  // namespace TarnHost::Store
