#include "settings/ProcessingProperties.h"

#include "settings/Fields.h"

namespace {

using settings::Field;
using settings::Int;
using settings::Real;

constexpr const char* kSixDecimals = "%.06f";
constexpr const char* kTwoDecimals = "%.02f";

// name, member, default, format, what a missing value reads as
constexpr Field<CScaleProperties> kScale[] = {
    Real("Scale_offset", &CScaleProperties::scaleOffset, 0.0, kSixDecimals, 0.0),
    Real("Scale_value", &CScaleProperties::scaleValue, 1.0, kSixDecimals, 0.0),
    Int("Scale_method", &CScaleProperties::scaleMethod, 0),
};
constexpr Field<CTranslateProperties> kTranslate[] = {
    Real("Translate_offset", &CTranslateProperties::translateOffset, 0.0, kSixDecimals, 0.0),
    Real("Translate_value", &CTranslateProperties::translateValue, 0.0, kSixDecimals, 0.0),
    Int("Translate_function", &CTranslateProperties::translateFunction, 0),
};
constexpr Field<CSmoothProperties> kSmooth[] = {
    Real("SmoothWaveLength", &CSmoothProperties::waveLength, 20.0, kTwoDecimals, 0.0),
};
constexpr Field<CSpikeDetectProperties> kSpikeDetect[] = {
    Real("SpikeWaveLength", &CSpikeDetectProperties::waveLength, 20.0, kTwoDecimals, 20.0),
    Real("SpikeWindowSize", &CSpikeDetectProperties::windowSize, 1.0, kTwoDecimals, 1.0),
    Int("ShowSpikeWindow", &CSpikeDetectProperties::showWindow, 1),
};
constexpr Field<CMedianFilterProperties> kMedianFilter[] = {
    Real("MedianFilterLength", &CMedianFilterProperties::filterLength, 20.0, kTwoDecimals, 11.0),
    Real("MedianFilterDistance", &CMedianFilterProperties::filterDistance, 1.0, kTwoDecimals, 1.0),
    Int("MedianShowSpikeWindow", &CMedianFilterProperties::showWindow, 0),
};

}  // namespace

void CScaleProperties::SaveToRegistry(CString section) { settings::SaveFields(*this, kScale, section); }
void CScaleProperties::LoadFromRegistry(CString section) { settings::LoadFields(*this, kScale, section); }
void CScaleProperties::SetDefaultValues() { settings::ResetFields(*this, kScale); }

void CTranslateProperties::SaveToRegistry(CString section) {
    settings::SaveFields(*this, kTranslate, section);
}
void CTranslateProperties::LoadFromRegistry(CString section) {
    settings::LoadFields(*this, kTranslate, section);
}
void CTranslateProperties::SetDefaultValues() { settings::ResetFields(*this, kTranslate); }

void CSmoothProperties::SaveToRegistry(CString section) { settings::SaveFields(*this, kSmooth, section); }
void CSmoothProperties::LoadFromRegistry(CString section) { settings::LoadFields(*this, kSmooth, section); }
void CSmoothProperties::SetDefaultValues() { settings::ResetFields(*this, kSmooth); }

void CSpikeDetectProperties::SaveToRegistry(CString section) {
    settings::SaveFields(*this, kSpikeDetect, section);
}
void CSpikeDetectProperties::LoadFromRegistry(CString section) {
    settings::LoadFields(*this, kSpikeDetect, section);
}
void CSpikeDetectProperties::SetDefaultValues() { settings::ResetFields(*this, kSpikeDetect); }

void CMedianFilterProperties::SaveToRegistry(CString section) {
    settings::SaveFields(*this, kMedianFilter, section);
}
void CMedianFilterProperties::LoadFromRegistry(CString section) {
    settings::LoadFields(*this, kMedianFilter, section);
}
void CMedianFilterProperties::SetDefaultValues() { settings::ResetFields(*this, kMedianFilter); }
