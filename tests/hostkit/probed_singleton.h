#pragma once

#include <atomic>

#include "Wren/Base/singleton.h"
#include "host_export.h"

class TARN_HOST_EXPORT ProbedSingleton : public Wren::Base::CSingleton<ProbedSingleton> {
 public:
  ProbedSingleton() { ++Made(); }
  ~ProbedSingleton() { ++Gone(); }

  static std::atomic<int>& Made() {
    static std::atomic<int> made{0};
    return made;
  }
  static std::atomic<int>& Gone() {
    static std::atomic<int> gone{0};
    return gone;
  }
};

TARN_HOST_EXPORT ProbedSingleton* InstanceSeenByProbe();
TARN_HOST_EXPORT bool IsCreatedSeenByProbe();
