#pragma once

/// Every class and function of the host's libraries that crosses a library boundary carries this mark; everything else
/// is hidden. Both the host and those who call it see the symbols with default visibility.
#define TARN_HOST_EXPORT __attribute__((visibility("default")))
