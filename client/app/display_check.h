#pragma once

#include <QString>

namespace TarnClient {

/// Why no window can be shown, as one line; empty when one can. The toolkit ends the whole program when it finds no
/// display, so a process of its own tries first. Call before the application object is made and any thread runs.
QString WhyNoDisplay();

}  // namespace TarnClient
