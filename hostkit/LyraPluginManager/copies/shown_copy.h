#pragma once

#include <QString>
#include <atomic>
#include <memory>

#include "TarnHost/camera_access.h"
#include "copies/copy_file.h"
#include "store/plan_reader.h"

namespace TarnHost::Store {

/// The copy that stands in for a store which does not answer. Thread: any.
class CShownCopy {
 public:
  enum Care {
    kWhole,  // looks whether it is sound, before all of it is shown
    kInPart  // at once: what is wrong shows in what is read
  };
  /// Throws CStoreError when it cannot be used or is not this user's.
  CShownCopy(const QString& folder, const QString& url, const QString& user, Care care = kWhole);
  ~CShownCopy();

  const QString& Path() const { return path_; }
  const CopyFacts& Facts() const { return facts_; }
  /// Opens it for who reads all of it.
  std::unique_ptr<CSqlEngine> Open() const { return CopyFile::OpenAgain(path_); }
  /// Reads of it what is not in memory.
  CPlanReader& Reader() { return reader_; }
  /// Says of these cameras which need the store.
  void MarkWithheld(CameraAccessList* access) const;

  /// Why it is still shown.
  enum Reason { kNoAnswer, kPasswordRefused, kOtherSite };
  Reason Why() const { return why_; }
  void SetWhy(Reason why) { why_ = why; }

 private:
  const QString path_;
  const CopyFacts facts_;
  CPlanReader reader_;
  std::atomic<Reason> why_{kNoAnswer};
};

}  // namespace TarnHost::Store
