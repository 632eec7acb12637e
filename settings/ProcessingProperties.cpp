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

constexpr auto& RowsOf(const CScaleProperties&) { return kScale; }
constexpr auto& RowsOf(const CTranslateProperties&) { return kTranslate; }
constexpr auto& RowsOf(const CSmoothProperties&) { return kSmooth; }
constexpr auto& RowsOf(const CSpikeDetectProperties&) { return kSpikeDetect; }
constexpr auto& RowsOf(const CMedianFilterProperties&) { return kMedianFilter; }

}  // namespace

template <class Set>
void ProcessingSet<Set>::SaveToRegistry(CString section) {
    const Set& set = static_cast<Set&>(*this);
    settings::SaveFields(set, RowsOf(set), section);
}

template <class Set>
void ProcessingSet<Set>::LoadFromRegistry(CString section) {
    Set& set = static_cast<Set&>(*this);
    settings::LoadFields(set, RowsOf(set), section);
}

template <class Set>
void ProcessingSet<Set>::SetDefaultValues() {
    Set& set = static_cast<Set&>(*this);
    settings::ResetFields(set, RowsOf(set));
}

template class ProcessingSet<CScaleProperties>;
template class ProcessingSet<CTranslateProperties>;
template class ProcessingSet<CSmoothProperties>;
template class ProcessingSet<CSpikeDetectProperties>;
template class ProcessingSet<CMedianFilterProperties>;
