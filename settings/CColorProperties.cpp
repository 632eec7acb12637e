#include "settings/CColorProperties.h"

#include "settings/Fields.h"

namespace {

using P = CColorProperties;
using settings::Color;

constexpr settings::Field<P> kFields[] = {
    Color("BackGround Color", &P::background, 0xFFFFFF),
    Color("Grid Color", &P::grid, 0x808080),
    Color("Dot Color", &P::dots, 0x825B00),
    Color("Axis Color", &P::axis, 0x000000),
    Color("Modified Color", &P::modified, 0x000000),
    Color("Region Color", &P::region, 0xFFE179),
};

}  // namespace

void CColorProperties::SaveToRegistry(CString section) { settings::SaveFields(*this, kFields, section); }

void CColorProperties::LoadFromRegistry(CString section) { settings::LoadFields(*this, kFields, section); }

void CColorProperties::SetDefaultValues() { settings::ResetFields(*this, kFields); }
