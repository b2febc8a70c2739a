#pragma once

#include "window/window_actions.h"

namespace TarnClient {

/// Where on a desk somebody does something.
enum class DeskPlace {
  Rows,       // the plans and groups of a panel
  Tabs,       // of the panels
  PageTurns,  // the buttons to turn and to hold
  Wall,
  LockSign,  // the sign that the desk is locked, and the dialog to unlock it
  Elsewhere
};

enum class DeskInput {
  Click,     // with the left button, the second one of two as well
  Drag,      // moving with a button down, and what is dropped
  Scroll,    // with the wheel
  StepKey,   // arrows, Page Up and Down, Home and End, alone
  PlayKey,   // Return
  HoldKey,   // Space
  FocusKey,  // Tab and its reverse
  IdleKey,   // one that does nothing by itself, as Shift, or nothing here, as those for loudness
  Other      // other buttons and keys, menus, what is typed
};

/// What a locked desk lets through: playing plans, holding and turning their pages, and what leads to that. A locked
/// desk is to be worked at, not to be changed.
bool WorksWhileLocked(DeskPlace place, DeskInput input);
bool WorksWhileLocked(WindowCommand command);

}  // namespace TarnClient
