#pragma once

#include "site/camera_trials.h"

namespace TarnClient {

/// Opens addresses that are tried over connections of their own, made when the first one is; they end with the last
/// copy of what this answers, which then waits until the cameras were said goodbye to. Thread: GUI.
CCameraTrials::OpenTrial StreamTrials();

}  // namespace TarnClient
