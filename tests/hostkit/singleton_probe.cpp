#include "probed_singleton.h"

ProbedSingleton* InstanceSeenByProbe() {
  return &ProbedSingleton::Instance();
}

bool IsCreatedSeenByProbe() {
  return ProbedSingleton::IsCreated();
}
