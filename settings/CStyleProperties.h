// The drawing style that a host gives to new series.
#pragma once

#include "settings/TavinProp.h"

// The slots are fixed and have no destructor among them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class CStyleProperties : public TavinProp {
  public:
    CStyleProperties() { CStyleProperties::SetDefaultValues(); }

    void SaveToRegistry(CString section) override;
    void LoadFromRegistry(CString section) override;
    void SetDefaultValues() override;

    int LineStyle;  // 0 solid, 1 dashed, 2 dotted, 3 dash-dot, 4 dash-dot-dot
    int DotSize;
    int DrawStyle;  // 0 dots only, 1 line and dots, 2 line only
};

#pragma GCC diagnostic pop
