// A coordinate system with a scale and an origin per axis. A negative extent flips its axis.
#pragma once

#include "views/CCoordinateSystem.h"

class CCarthesian : public CCoordinateSystem {
    DECLARE_DYNAMIC(CCarthesian)

  public:
    // World (0, 0) to (1, 1) on device (0, 0) to (1000, 1000).
    CCarthesian();
    // A degenerate extent keeps its default.
    CCarthesian(int deviceOrgX, int deviceOrgY, int deviceExtX, int deviceExtY, CPointEx worldOrg,
                CSizeEx worldExt);

    CPointEx& WorldToDevice(CPointEx& point) override;
    CPointEx& DeviceToWorld(CPointEx& point) override;
    double WorldToDeviceX(double x) override;
    double WorldToDeviceY(double y) override;
    double DeviceToWorldX(double x) override;
    double DeviceToWorldY(double y) override;

    void SetDeviceOrg(int x, int y);
    void SetWorldOrg(CPointEx origin);
    // Refuse a degenerate extent: false, nothing changes. A device extent may not be 0 on either axis; the
    // size of a world extent lies within 1e-300 ... 1e300.
    bool SetDeviceExt(int cx, int cy);
    bool SetWorldExt(CSizeEx extent);
    CPoint GetDeviceOrg() const { return deviceOrg; }
    CSize GetDeviceExt() const { return deviceExt; }
    CPointEx GetWorldOrg() const { return worldOrg; }
    CSizeEx GetWorldExt() const { return worldExt; }
    // Back to the state of the default constructor.
    bool Reset();

  private:
    void UpdateScales();

    double minScale = 1e-300;
    double maxScale = 1e300;
    CPointEx deviceOrg;
    CSizeEx deviceExt{1000, 1000};
    CPointEx worldOrg;
    CSizeEx worldExt{1.0, 1.0};
};
