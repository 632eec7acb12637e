// A recursive lock in the framework's shape: its owner may lock again, and unlocks as often as it locked.
#pragma once

#include <mutex>

#include "platform/core/Types.h"

class CCriticalSection {
  public:
    BOOL Lock() {
        mutex_.lock();
        return TRUE;
    }
    BOOL Unlock() {
        mutex_.unlock();
        return TRUE;
    }

  private:
    std::recursive_mutex mutex_;
};
