// How a view that shows its series in tiles divides its area. No range is enforced here: whoever lays out
// tiles copes.
#pragma once

#include "settings/TavinProp.h"

class CTiledLayoutProperties final : public TavinProp {
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
