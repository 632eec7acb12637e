#include "views/CCarthesian.h"

#include <cmath>

IMPLEMENT_DYNAMIC(CCoordinateSystem, CObject)
IMPLEMENT_DYNAMIC(CCarthesian, CCoordinateSystem)

CCarthesian::CCarthesian() { Reset(); }

CCarthesian::CCarthesian(int deviceOrgX, int deviceOrgY, int deviceExtX, int deviceExtY, CPointEx newWorldOrg,
                         CSizeEx newWorldExt)
    : CCarthesian() {
    SetDeviceOrg(deviceOrgX, deviceOrgY);
    SetDeviceExt(deviceExtX, deviceExtY);
    SetWorldOrg(newWorldOrg);
    SetWorldExt(newWorldExt);
}

CPointEx& CCarthesian::WorldToDevice(CPointEx& point) {
    return point = CPointEx(WorldToDeviceX(point.x), WorldToDeviceY(point.y));
}

CPointEx& CCarthesian::DeviceToWorld(CPointEx& point) {
    return point = CPointEx(DeviceToWorldX(point.x), DeviceToWorldY(point.y));
}

double CCarthesian::WorldToDeviceX(double x) { return (x - worldOrg.x) * forward.m11 + forward.dx; }

double CCarthesian::WorldToDeviceY(double y) { return (y - worldOrg.y) * forward.m22 + forward.dy; }

double CCarthesian::DeviceToWorldX(double x) { return (x - deviceOrg.x) * inverse.m11 + inverse.dx; }

double CCarthesian::DeviceToWorldY(double y) { return (y - deviceOrg.y) * inverse.m22 + inverse.dy; }

void CCarthesian::SetDeviceOrg(int x, int y) {
    deviceOrg = CPointEx(x, y);
    forward.dx = x;
    forward.dy = y;
}

void CCarthesian::SetWorldOrg(CPointEx origin) {
    worldOrg = origin;
    inverse.dx = origin.x;
    inverse.dy = origin.y;
}

bool CCarthesian::SetDeviceExt(int cx, int cy) {
    if (cx == 0 || cy == 0) return false;
    deviceExt = CSizeEx(cx, cy);
    UpdateScales();
    return true;
}

bool CCarthesian::SetWorldExt(CSizeEx extent) {
    // Written so that not-a-number is refused as well.
    const auto usable = [this](double size) {
        return std::abs(size) >= minScale && std::abs(size) <= maxScale;
    };
    if (!usable(extent.cx) || !usable(extent.cy)) return false;
    worldExt = extent;
    UpdateScales();
    return true;
}

bool CCarthesian::Reset() {
    deviceExt = CSizeEx(1000, 1000);
    worldExt = CSizeEx(1.0, 1.0);
    SetDeviceOrg(0, 0);
    SetWorldOrg(CPointEx(0.0, 0.0));
    const CSize extent = GetDeviceExt();
    SetDeviceExt(extent.cx, extent.cy);
    return SetWorldExt(worldExt);
}

void CCarthesian::UpdateScales() {
    forward.m11 = deviceExt.cx / worldExt.cx;
    forward.m22 = deviceExt.cy / worldExt.cy;
    inverse.m11 = worldExt.cx / deviceExt.cx;
    inverse.m22 = worldExt.cy / deviceExt.cy;
}
