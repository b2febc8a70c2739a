#include "gui_holds.h"

#include <QtTest>
#include <algorithm>

namespace StoreTest {
namespace {

constexpr int kSoonMs = 10000;
constexpr int kAutomaticPlan = 1;
const char kName[] = "Due all day";

double MsOf(const std::function<void()>& call) {
  QElapsedTimer clock;
  clock.start();
  call();
  return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

}  // namespace

CServerFault::CServerFault(Kind kind, const CStoreFixture& fixture, CFaultyLine* line) : line_(line) {
  switch (kind) {
    case kHangs:
      pause_ = std::make_unique<CServerPause>();
      break;
    case kLineIsCut:
      line_->Cut();
      break;
    case kLineIsSilent:
      line_->Silence();
      break;
    case kIsLocked:
      lock_ = std::make_unique<CWritersHold>(fixture);
      break;
  }
}

CServerFault::~CServerFault() {
  line_->Mend();
}

CGuiHolds::CGuiHolds(CClient client, const CClient& other) : client_(std::move(client)), plan_(other.Plan("Gate A")) {
  client_->ViewRegisterResourceUpdate(this, {ResourceData::RT_VIEW, plan_, 1});
  auto change = other.Unchanged(plan_);
  change.plan_name = kName;
  change.auto_play = true;
  change.begin_time = "00:00:00";
  change.end_time = "23:59:59";
  if (!client_.SetDefaultView(plan_, kPlanType).isEmpty() || !other.Update(change).isEmpty() ||
      !QTest::qWaitFor([this] { return notices_ > 0; }, kSoonMs)) {
    qFatal("the desk does not get ready");
  }
}

CGuiHolds::~CGuiHolds() {
  client_->ViewRegisterResourceUpdate(this, {ResourceData::RT_VIEW, plan_, 0});
}

void CGuiHolds::OnResourceUpdate(const Param&) {
  ++notices_;
  Read(kName, [this] { return client_.DetailAtOnce(plan_).name; });
}

void CGuiHolds::Read(const QString& wanted, const std::function<std::string()>& read) {
  std::string answer;
  longest_.read = std::max(longest_.read, MsOf([&] { answer = read(); }));
  if (answer != wanted.toStdString()) {
    wrong_.append(QString::fromStdString(answer));
  }
}

void CGuiHolds::Ask(int milliseconds, const std::function<bool()>& is_known) {
  QElapsedTimer clock;
  clock.start();
  while (!clock.hasExpired(milliseconds)) {
    Read(kName, [this] { return client_.DetailAtOnce("123", kAutomaticPlan).name; });
    Read(QString::fromStdString(plan_), [this] { return client_.DefaultView(); });
    Read(kName, [this] { return client_.DetailAtOnce(plan_).name; });
    const bool was_known = is_known();
    for (const std::function<void()>& write : std::vector<std::function<void()>>{
             [this] { client_.Share(plan_, "2"); }, [this] { client_.SetDefaultView(plan_, kPlanType); }}) {
      const double ms = MsOf(write);
      double& longest = was_known ? longest_.write_when_known : longest_.write;
      longest = std::max(longest, ms);
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
  }
}

}  // namespace StoreTest
