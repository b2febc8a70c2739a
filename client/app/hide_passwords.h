#pragma once

namespace TarnClient {

/// Takes the passwords out of the arguments, where everybody on the machine can read them in the list of processes.
/// Once they have been copied; what remains is never longer than it was.
void HidePasswords(int argc, char** argv);

}  // namespace TarnClient
