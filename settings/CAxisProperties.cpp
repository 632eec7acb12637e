#include "settings/CAxisProperties.h"

#include "settings/Fields.h"

namespace {

using P = CAxisProperties;
using settings::Field;
using settings::Int;
using settings::Real;
using settings::Text;

constexpr const char* kTwoDecimals = "%.02f";

constexpr Field<P> kFields[] = {
    Int("ShowX", &P::ShowX, 1),
    Int("ShowY", &P::ShowY, 1),
    Int("XAutoScale", &P::XAutoScale, 1),
    Int("YAutoScale", &P::YAutoScale, 1),
    Int("PositiveUp", &P::PositiveUp, 1),
    Int("DrawXLines", &P::DrawXLines, 1),
    Int("DrawYLines", &P::DrawYLines, 1),
    Int("XAxisPos", &P::XAxisPos, 2),
    Int("YAxisPos", &P::YAxisPos, 0),
    Text("UnitX", &P::UnitX, "s"),
    Text("UnitY", &P::UnitY, "m"),
    Real("MinX", &P::MinX, -1.0, kTwoDecimals),
    Real("MaxX", &P::MaxX, 1.0, kTwoDecimals),
    Real("MinY", &P::MinY, -1.0, kTwoDecimals),
    Real("MaxY", &P::MaxY, 1.0, kTwoDecimals),
};

}  // namespace

void CAxisProperties::SaveToRegistry(CString section) { settings::SaveFields(*this, kFields, section); }

void CAxisProperties::LoadFromRegistry(CString section) { settings::LoadFields(*this, kFields, section); }

void CAxisProperties::SetDefaultValues() { settings::ResetFields(*this, kFields); }
