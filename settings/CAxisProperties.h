// The axes of a graph view: which are drawn and where, their units, ranges in user units and grid lines.
#pragma once

#include "platform/core/CPointEx.h"
#include "platform/core/CString.h"
#include "settings/TavinProp.h"

class CAxisProperties : public TavinProp {
  public:
    CAxisProperties() { CAxisProperties::SetDefaultValues(); }
    CAxisProperties(const CAxisProperties&) = default;
    CAxisProperties& operator=(const CAxisProperties&) = default;

    void SaveToRegistry(CString section) override;
    // A range comes back rounded to two decimals and to single precision.
    void LoadFromRegistry(CString section) override;
    void SetDefaultValues() override;
    virtual ~CAxisProperties() = default;

    CPointEx GetOrg() const { return {MinX, MinY}; }
    CSizeEx GetExtent() const { return {MaxX - MinX, MaxY - MinY}; }
    // Widen a range about its centre by `factor`.
    void ScaleX(double factor) { Scale(MinX, MaxX, factor); }
    void ScaleY(double factor) { Scale(MinY, MaxY, factor); }

    int ShowX;
    int ShowY;
    CString UnitX;
    CString UnitY;
    double MinX;
    double MaxX;
    int XAutoScale;  // the range follows the data
    double MinY;
    double MaxY;
    int YAutoScale;
    int DrawXLines;  // grid lines at the ticks
    int DrawYLines;
    int XAxisPos;  // 0 top, 1 centre, 2 bottom
    int YAxisPos;  // 0 left, 1 centre, 2 right
    int PositiveUp;

  private:
    static void Scale(double& low, double& high, double factor) {
        const double widening = (high - low) * (factor - 1.0) / 2.0;
        low -= widening;
        high += widening;
    }
};
