// How a view that shows its series in tiles divides its area. No range is enforced here: whoever lays out
// tiles copes.
#pragma once

#include "settings/TavinProp.h"

// The slots are fixed and have no destructor among them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class CTiledLayoutProperties : public TavinProp {
  public:
    CTiledLayoutProperties() { CTiledLayoutProperties::SetDefaultValues(); }

    void SaveToRegistry(CString section) override;
    // A missing value reads as its default, whatever the field held.
    void LoadFromRegistry(CString section) override;
    void SetDefaultValues() override;

    int NumColumns;
    int NumRows;
    int NumSourcesPerTile;
};

#pragma GCC diagnostic pop
