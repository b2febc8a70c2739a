#pragma once

#include <QThread>
#include <QtTest>
#include <functional>

#include "store_fixture.h"

namespace StoreTest {

enum Event { kChanged = 2, kAdded = 3, kRemoved = 4, kAll = 8 };

/// A notice: of which node, what has happened, to which row below it (of a change: its name), and that row's type.
inline QString Line(const std::string& node, int event, const std::string& second, int type) {
  return QString::fromStdString(node + ":" + std::to_string(event) + ":" + second + ":" + std::to_string(type));
}
inline const QString kWholeTree = Line("root", kAll, "", 0);

/// Writes down the notices of one client, each by Line(), then does what the test asks for.
class CRecorder : public ResourceData::IResourceObserver {
 public:
  CRecorder(CClient client, const std::vector<std::string>& groups, const std::vector<std::string>& plans = {})
      : client_(std::move(client)) {
    for (const std::string& group : groups) {
      Watch(kGroupType, group);
    }
    for (const std::string& plan : plans) {
      Watch(kPlanType, plan);
    }
  }
  ~CRecorder() override {
    for (const auto& [type, code] : watched_) {
      client_->ViewRegisterResourceUpdate(this, {type, code, 0});
    }
  }

  void Watch(int type, const std::string& code) {
    watched_.emplace_back(type, code);
    client_->ViewRegisterResourceUpdate(this, {type, code, 1});
  }
  void Unwatch(int type, const std::string& code) { client_->ViewRegisterResourceUpdate(this, {type, code, 0}); }

  void OnResourceUpdate(const Param& param) override {
    QVERIFY(QThread::currentThread() == QCoreApplication::instance()->thread());
    lines.append(Line(param.index_code, param.event, param.second, param.type));
    if (then) {
      then();
    }
  }

  QStringList lines;
  std::function<void()> then;

 private:
  const CClient client_;
  std::vector<std::pair<int, std::string>> watched_;
};

}  // namespace StoreTest
