// Turns user units (world) into the units that its owner maps into (device; for a graph view the stored
// units) and back, by two affine matrices.
#pragma once

#include "platform/core/CObject.h"
#include "platform/core/CPointEx.h"

class CCoordinateSystem : public CObject {
    DECLARE_DYNAMIC(CCoordinateSystem)

  public:
    // The point forms convert in place and return the point.
    virtual CPointEx& WorldToDevice(CPointEx& point) = 0;
    virtual CPointEx& DeviceToWorld(CPointEx& point) = 0;
    virtual double WorldToDeviceX(double x) = 0;
    virtual double WorldToDeviceY(double y) = 0;
    virtual double DeviceToWorldX(double x) = 0;
    virtual double DeviceToWorldY(double y) = 0;

  protected:
    struct Matrix {
        double m11 = 0.0;
        double m12 = 0.0;
        double m21 = 0.0;
        double m22 = 0.0;
        double dx = 0.0;
        double dy = 0.0;
    };

    CCoordinateSystem() = default;

    Matrix forward;
    Matrix inverse;
};
