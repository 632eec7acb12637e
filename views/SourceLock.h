// Holds a series locked for a scope; a null one is none.
#pragma once

#include "sources/IPointSource.h"

class [[nodiscard]] SourceLock {
  public:
    explicit SourceLock(IPointSource* source) : source_(source) {
        if (source_) source_->Lock();
    }
    ~SourceLock() {
        if (source_) source_->UnLock();
    }
    SourceLock(const SourceLock&) = delete;
    SourceLock& operator=(const SourceLock&) = delete;

  private:
    IPointSource* source_;
};
