// The colours of a graph view, 0x00BBGGRR.
#pragma once

#include "platform/core/Types.h"
#include "settings/TavinProp.h"

// The slots are fixed and have no destructor among them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class CColorProperties : public TavinProp {
  public:
    CColorProperties() { CColorProperties::SetDefaultValues(); }

    void SaveToRegistry(CString section) override;
    void LoadFromRegistry(CString section) override;
    void SetDefaultValues() override;

    COLORREF background;
    COLORREF grid;
    COLORREF dots;      // of every series drawn with dots
    COLORREF axis;      // axes, ticks and labels
    COLORREF modified;  // dots of edited points
    COLORREF region;    // hatching of the marked region
};

#pragma GCC diagnostic pop
