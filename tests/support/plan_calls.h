#pragma once

#include <QStringList>
#include <string>

#include "TarnHost/host_services.h"
#include "TarnHost/plan_store.h"
#include "plan_records.h"

namespace TarnTest {

/// Logs in and waits for the plans, and for the tree event of that, so that it turns up in no test's record.
bool LogIn(TarnHost::CPlanStore& store, const QString& user, QString* error);

/// The calls of a host in the form tests want them: changes answer the text of their failure, empty when they were
/// made. Over another client's store they are changes from elsewhere; see CPlanFixture::InStore(), too.
class CPlanCalls {
 public:
  explicit CPlanCalls(TarnHost::IHostServices& host) : host_(&host) {}
  virtual ~CPlanCalls() = default;

  /// "name@parent" of each group or plan below `parent`; "!text" for a failure.
  QStringList Groups(const Text& parent) const;
  QStringList Plans(const Text& group) const;
  /// Code of the child group with this name; empty when there is none.
  std::string Group(const Text& parent, const std::string& name) const;
  /// Off this thread, as a client asks: the GUI thread is answered from memory and does not wait for long.
  GetPlanDetailResponse Detail(const Text& plan, int kind = 0) const;
  /// On this thread, as a tree asks after a notice.
  GetPlanDetailResponse DetailAtOnce(const Text& plan, int kind = 0) const;
  QStringList Search(const char* text, int scope) const;
  /// Hits with what their second line says: "Gates/North/Gate B", and of one found by a camera "... (camera)".
  QStringList Found(const char* text, int scope) const;
  std::string DefaultView() const;

  QString AddGroup(const Text& parent, const Text& name, std::string* code = nullptr) const;
  QString AddPlan(const AddPlanRequest& request, std::string* code = nullptr) const;
  /// With one camera on one page.
  QString AddPlan(const Text& parent, const Text& name, std::string* code = nullptr) const;
  QString RenameGroup(const Text& code, const Text& name) const;
  QString DeleteGroup(const Text& code) const;
  QString DeletePlan(const Text& code) const;
  /// With the kind of a refusal, if `kind` is not null.
  QString RestorePlan(const Text& code, int32_t* kind = nullptr) const;
  QString RestoreGroup(const Text& code, int32_t* kind = nullptr) const;
  QString Update(const UpdatePlanRequest& request) const;
  QString Share(const Text& plan, const Text& users) const;
  QString SetDefaultView(const Text& code, int type) const;

 protected:
  CPlanCalls() = default;
  virtual TarnHost::IHostServices& Host() const { return *host_; }

 private:
  QString Restore(const view_plugin_protocol::RestoreDeletedRequest& request, int32_t* kind) const;

  TarnHost::IHostServices* host_ = nullptr;
};

}  // namespace TarnTest
