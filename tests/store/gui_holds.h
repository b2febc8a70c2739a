#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <memory>

#include "faulty_line.h"
#include "server_pause.h"
#include "store_fixture.h"

namespace StoreTest {

/// What can go wrong with a server or with the way to it, for as long as this lives.
class CServerFault {
 public:
  enum Kind { kHangs, kLineIsCut, kLineIsSilent, kIsLocked };

  CServerFault(Kind kind, const CStoreFixture& fixture, CFaultyLine* line);
  ~CServerFault();
  CServerFault(const CServerFault&) = delete;
  CServerFault& operator=(const CServerFault&) = delete;

 private:
  CFaultyLine* const line_;
  std::unique_ptr<CServerPause> pause_;
  std::unique_ptr<CWritersHold> lock_;
};

/// A desk that asks, on the GUI thread and again and again, what has to be asked there: the plan that is due, what
/// opens at the start, a plan after a notice; it shares a plan and sets what opens at the start.
class CGuiHolds : public ResourceData::IResourceObserver {
 public:
  /// The longest call of a kind, in milliseconds.
  struct Longest {
    double read = 0, write = 0;
    double write_when_known = 0;  // once the trouble was said
  };

  /// `other` prepares the plans and makes the change of which this desk gets notice in mid-fault.
  CGuiHolds(CClient client, const CClient& other);
  ~CGuiHolds() override;
  void OnResourceUpdate(const Param&) override;

  /// Asks everything for so long, while events go on. `is_known` answers whether the trouble was said by now.
  void Ask(int milliseconds, const std::function<bool()>& is_known);
  const Longest& Holds() const { return longest_; }
  /// What a read answered that was not right.
  const QStringList& Wrong() const { return wrong_; }
  int Notices() const { return notices_; }

 private:
  void Read(const QString& wanted, const std::function<std::string()>& read);

  const CClient client_;
  std::string plan_;
  Longest longest_;
  QStringList wrong_;
  int notices_ = 0;
};

}  // namespace StoreTest
