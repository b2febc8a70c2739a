#pragma once

#include <QVector>
#include <optional>

#include "plan_document.h"

class QMimeData;

namespace TarnPlanView {

/// The cameras that a drag carries, in order. Empty for anything that is not one or more cameras of the site whose
/// client this is. Thread: GUI.
std::optional<QVector<DraftCamera>> ReadCameraDrop(const QMimeData* mime);

}  // namespace TarnPlanView
