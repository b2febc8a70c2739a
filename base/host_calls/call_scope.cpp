#include "host_calls/call_scope.h"

namespace HostCalls {

void CCallScope::Drop() {
  *dropped_ = true;
  dropped_ = std::make_shared<std::atomic<bool>>(false);
  open_ = std::make_shared<int>(0);
}

CCallScope::Ticket CCallScope::Current() const {
  Ticket ticket;
  ticket.dropped_ = dropped_;
  ticket.open_ = open_;
  return ticket;
}

CCallScope::Ticket CCallScope::Enter() {
  ++*open_;
  return Current();
}

bool CCallScope::Leave(const Ticket& ticket) {
  --*ticket.open_;
  return !ticket.IsDropped();
}

}  // namespace HostCalls
