#pragma once

#include "store/sql_engine.h"

namespace TarnHost::Store {

/// Sees to it that a change of users, whichever way it comes, leaves somebody who may configure the site. Throws
/// CStoreError. Thread: the engine's.
class CAdministrators {
 public:
  /// In the transaction, before the change.
  explicit CAdministrators(CSqlEngine& engine) : engine_(engine), were_there_(AreThere()) {}

  /// After it: refuses to take the right from the last who has it.
  void RequireKept();

 private:
  bool AreThere();

  CSqlEngine& engine_;
  const bool were_there_;
};

}  // namespace TarnHost::Store
