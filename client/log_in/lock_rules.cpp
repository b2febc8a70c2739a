#include "log_in/lock_rules.h"

namespace TarnClient {

namespace {

bool WorksInRows(DeskInput input) {
  return input == DeskInput::Click || input == DeskInput::Scroll || input == DeskInput::StepKey ||
         input == DeskInput::PlayKey;
}

// A click makes a window current, from where keys would go on to change it.
bool WorksOnWall(DeskInput input) {
  return input == DeskInput::StepKey || input == DeskInput::HoldKey;
}

bool IsPress(DeskInput input) {
  return input == DeskInput::Click || input == DeskInput::HoldKey || input == DeskInput::PlayKey;
}

bool WorksAtPageTurns(DeskInput input) {
  return IsPress(input) || input == DeskInput::StepKey;
}

}  // namespace

bool WorksWhileLocked(DeskPlace place, DeskInput input) {
  if (place == DeskPlace::LockSign || input == DeskInput::FocusKey) {
    return true;
  }
  switch (place) {
    case DeskPlace::Rows:
      return WorksInRows(input);
    case DeskPlace::Tabs:
      return input == DeskInput::Click || input == DeskInput::StepKey;
    case DeskPlace::PageTurns:
      return WorksAtPageTurns(input);
    case DeskPlace::Wall:
      return WorksOnWall(input);
    case DeskPlace::LockSign:
    case DeskPlace::Elsewhere:
      break;
  }
  return false;
}

bool WorksWhileLocked(WindowCommand command) {
  switch (command) {
    case WindowCommand::Lock:  // unlocks it
    case WindowCommand::PlayAgain:
      return true;
    case WindowCommand::Save:
    case WindowCommand::SaveAs:
    case WindowCommand::WaysToSave:
    case WindowCommand::History:
    case WindowCommand::Messages:
    case WindowCommand::Users:
    case WindowCommand::Settings:
    case WindowCommand::ShowInTree:
    case WindowCommand::NewWall:
    case WindowCommand::CloseWall:
    case WindowCommand::FullScreen:
    case WindowCommand::Menu:
    case WindowCommand::Keys:
    case WindowCommand::About:
    case WindowCommand::Quit:
      break;
  }
  return false;
}

}  // namespace TarnClient
