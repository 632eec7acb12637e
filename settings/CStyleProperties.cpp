#include "settings/CStyleProperties.h"

#include "settings/Fields.h"

namespace {

using P = CStyleProperties;
using settings::Int;

constexpr settings::Field<P> kFields[] = {
    Int("LineStyle", &P::LineStyle, 0),
    Int("DotSize", &P::DotSize, 1),
    Int("DrawStyle", &P::DrawStyle, 2),
};

}  // namespace

void CStyleProperties::SaveToRegistry(CString section) { settings::SaveFields(*this, kFields, section); }

void CStyleProperties::LoadFromRegistry(CString section) { settings::LoadFields(*this, kFields, section); }

void CStyleProperties::SetDefaultValues() { settings::ResetFields(*this, kFields); }
