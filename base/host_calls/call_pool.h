#pragma once

class QThreadPool;

namespace HostCalls {

/// The threads on which the host is called; one pool for all libraries of the process, a child of the application.
///
/// Not Qt's global pool: Qt waits for that one itself when it paints or scales large pictures, so a window would stand
/// still as long as calls wait for a slow host. At least four threads, since calls wait more than they reckon.
/// Thread: any; of each library the first call is the GUI thread's, while there is an application.
QThreadPool& CallPool();

/// Waits for what runs or waits in it, as long as that takes. Does nothing once the application is gone.
void AwaitCalls();

}  // namespace HostCalls
