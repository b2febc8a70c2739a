#pragma once

#include <optional>

/// What only the X server knows. Thread: GUI.
namespace TarnQt::X11Display {

/// Windows can be shown through each other; so they always can where the display is none of X11.
bool CanBlend();

/// The lights of the keyboard as XKB counts them, caps lock the first bit; none where the display is none of X11.
std::optional<unsigned int> KeyboardLights();

}  // namespace TarnQt::X11Display
