#pragma once

#include <map>
#include <set>
#include <vector>

#include "copies/copy_source.h"

namespace TarnHost::Store {

/// Puts rows into a copy, inside the caller's transaction. Throws CStoreError. Thread: the engine's.
class CCopyWriter {
 public:
  explicit CCopyWriter(CSqlEngine& copy) : copy_(copy) {}

  /// These rows alone stand in the table.
  void Replace(const TableRows& rows);
  /// These stand in the place of those with the same key.
  void Put(const TableRows& rows);
  /// With their content, as CCopySource::PlanRows() reads them.
  void PutPlans(const TableRows& rows);
  void RemovePlans(const std::vector<int32_t>& codes);
  void RemovePlansIn(const std::vector<int32_t>& groups);

  std::set<int32_t> Groups();
  /// By code.
  std::map<int32_t, PlanVersion> Plans();
  /// Cameras that plans name and the copy does not have.
  std::vector<int32_t> MissingCameras();
  void RemoveCameras();
  /// Those that no plan names any more go.
  void RemoveUnnamedCameras();

 private:
  std::set<int32_t> Numbers(const char* statement);
  std::set<int32_t> NamedCameras();
  void RemoveAll(const char* statement, const std::vector<int32_t>& numbers);

  CSqlEngine& copy_;
};

}  // namespace TarnHost::Store
