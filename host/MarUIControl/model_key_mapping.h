#pragma once

#include "host_export.h"

namespace MarUIControl {

/// Roles that the host's tree control reads from its models. Thread: GUI.
class TARN_HOST_EXPORT CModelKeyMapping {
 public:
  /// The numbers are shared with models of plug-ins; plug-ins use others between 657 and 674.
  enum Role {
    MarkRole = 378,       ///< bool: the row carries a mark column.
    GroupMarkRole = 581,  ///< bool: the row can have children, whether or not they are loaded.
  };

  virtual ~CModelKeyMapping();

 protected:
  CModelKeyMapping() = default;
};

}  // namespace MarUIControl
