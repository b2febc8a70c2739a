#include "MarUIControl/model_key_mapping.h"

namespace MarUIControl {

CModelKeyMapping::~CModelKeyMapping() = default;

}  // namespace MarUIControl
