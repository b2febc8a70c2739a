#pragma once

#include <string>

namespace TarnPlanView {

struct PlanDraft;
class CWindowText;

/// The first page as a picture for the plan tree, as PNG bytes: its split with the cameras' names. Thread: GUI.
std::string PaintThumbnail(const PlanDraft& draft, const CWindowText& text);

}  // namespace TarnPlanView
