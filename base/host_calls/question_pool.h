#pragma once

class QThreadPool;

namespace HostCalls {

/// Two threads for what is only asked to offer a choice: a host that is slow to answer holds up no load and no save.
/// Thread: GUI.
QThreadPool& QuestionPool();

/// Drops the questions that wait, awaits those under way and ends the threads.
void ReleaseQuestionPool();

}  // namespace HostCalls
