#pragma once

class QThreadPool;

namespace HostCalls {

/// Two threads for questions that only fill lists of choices: loads and saves do not wait behind them when the host is
/// slow to answer.
/// Thread: GUI.
QThreadPool& QuestionPool();

/// Drops the questions that wait, awaits those under way and ends the threads.
void ReleaseQuestionPool();

}  // namespace HostCalls
