#include "settings/CTiledLayoutProperties.h"

#include "settings/Fields.h"

namespace {

using P = CTiledLayoutProperties;
using settings::Int;

constexpr settings::Field<P> kFields[] = {
    Int("NumSourcesPerTile", &P::NumSourcesPerTile, 1, 1),
    Int("NumColumns", &P::NumColumns, 2, 2),
    Int("NumRows", &P::NumRows, 2, 2),
};

}  // namespace

void CTiledLayoutProperties::SaveToRegistry(CString section) {
    settings::SaveFields(*this, kFields, section);
}

void CTiledLayoutProperties::LoadFromRegistry(CString section) {
    settings::LoadFields(*this, kFields, section);
}

void CTiledLayoutProperties::SetDefaultValues() { settings::ResetFields(*this, kFields); }
