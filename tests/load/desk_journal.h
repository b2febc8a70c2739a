#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <chrono>
#include <cstdio>
#include <mutex>

/// What a desk asks and what it is answered: a line of JSON each on standard output, with the time of a clock that all
/// processes of a machine share. A line that was written survives the process. Thread: any.
class CDeskJournal {
 public:
  void Begin(QJsonObject question) {
    question["begin"] = ++number_;
    Write(question);
  }
  void End(QJsonObject answer) {
    answer["end"] = number_;
    Write(answer);
  }
  void Write(QJsonObject line) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    line["at"] = static_cast<double>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    std::puts(QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
  }

 private:
  std::mutex mutex_;
  int number_ = 0;
};
