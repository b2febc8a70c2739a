#pragma once

namespace TarnClient {

/// Closes the menus and other pop-ups that are open; false where one does not close. Thread: GUI.
bool CloseAllPopups();

}  // namespace TarnClient
