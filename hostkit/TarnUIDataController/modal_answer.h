#pragma once

#include <functional>

#include "TarnHost/modal_answer.h"

namespace TarnHost {

/// The result of a modal box: of the answer set by SetModalAnswer(), else of `show`. Thread: GUI.
int AskModal(const ModalQuestion& question, const std::function<int()>& show);

}  // namespace TarnHost
