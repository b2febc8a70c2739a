// Many tasks on few threads, for the thread sanitizer: nothing here is built with Qt.
#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "pictures/decoding_pool.h"

using TarnClient::CDecodingPool;
using TarnClient::CDecodingTask;

namespace {

#define REQUIRE(condition)                                                 \
  do {                                                                     \
    if (!(condition)) {                                                    \
      std::fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      std::exit(1);                                                        \
    }                                                                      \
  } while (false)

// Does what it is given in order, and sees when two threads are at it.
class CountingTask : public CDecodingTask {
 public:
  void Give() { ++given_; }
  int Done() const { return done_; }

 protected:
  bool Work() override {
    REQUIRE(!inside_.exchange(true));
    if (done_ < given_) {
      ++unguarded_;
      ++done_;
    }
    REQUIRE(inside_.exchange(false));
    return done_ < given_;
  }

 private:
  std::atomic<int> given_{0}, done_{0};
  std::atomic<bool> inside_{false};
  int unguarded_ = 0;  // the sanitizer would see a race here
};

void EveryBitOfWorkIsDone() {
  CDecodingPool pool(3);
  std::vector<std::shared_ptr<CountingTask>> tasks;
  for (int number = 0; number < 20; ++number) {
    tasks.push_back(std::make_shared<CountingTask>());
  }
  std::vector<std::thread> givers;
  constexpr int kEach = 500;
  for (int giver = 0; giver < 2; ++giver) {
    givers.emplace_back([&] {
      for (int round = 0; round < kEach; ++round) {
        for (const auto& task : tasks) {
          task->Give();
          pool.Schedule(task);
        }
      }
    });
  }
  for (std::thread& giver : givers) {
    giver.join();
  }
  for (const auto& task : tasks) {
    while (task->Done() < 2 * kEach) {
      std::this_thread::yield();
    }
  }
  const double load = pool.TakeLoad();
  REQUIRE(load > 0 && load <= 1.01);
}

void ThePoolEndsWithWorkLeft() {
  const auto task = std::make_shared<CountingTask>();
  {
    CDecodingPool pool(2);
    for (int number = 0; number < 1000; ++number) {
      task->Give();
      pool.Schedule(task);
    }
  }
  REQUIRE(task.use_count() == 1);
}

}  // namespace

int main() {
  EveryBitOfWorkIsDone();
  ThePoolEndsWithWorkLeft();
  return 0;
}
