#pragma once

#include "platform/core/CString.h"

// Base of every set of persistent settings. A set saves itself into a section of the host's profile, loads
// itself from there and knows its defaults; none of this reports failure. Derived sets append their own
// virtual operations behind these three. Sets are not destroyed through this base.
class TavinProp {
  public:
    // Writes every field into `section`.
    virtual void SaveToRegistry(CString section) = 0;
    // Reads every field from `section`; a field whose value is missing keeps its current value, unless the
    // set names another.
    virtual void LoadFromRegistry(CString section) = 0;
    // Restores the defaults of the set, where it has any.
    virtual void SetDefaultValues() {}

    TavinProp() = default;
    TavinProp(const TavinProp&) = default;
    TavinProp(TavinProp&&) = default;
    TavinProp& operator=(const TavinProp&) = default;
    TavinProp& operator=(TavinProp&&) = default;

  protected:
    ~TavinProp() = default;
};
