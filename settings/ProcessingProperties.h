// The parameters of the processing commands as the user last entered them. Each set is edited on one page and
// kept in a section that its owner names. The texts that a set shows beside its values (units) are filled in
// by whoever builds the page and are never stored.
//
// A missing value, or one that is no number, reads as 0 unless its member says otherwise; numbers of methods
// and flags then stay as they are.
#pragma once

#include "platform/core/CString.h"
#include "settings/TavinProp.h"

// The slots are fixed and have no destructor among them.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A set that is its rows (ProcessingProperties.cpp) and nothing else.
template <class Set>
class ProcessingSet : public TavinProp {
  public:
    void SaveToRegistry(CString section) override;
    void LoadFromRegistry(CString section) override;
    void SetDefaultValues() override;
};

class CScaleProperties : public ProcessingSet<CScaleProperties> {
  public:
    CScaleProperties() { CScaleProperties::SetDefaultValues(); }

    float scaleOffset;  // the origin, real y
    float scaleValue;   // the factor; 1 by default, but 0 where it is missing from the store
    int scaleMethod;    // as in editing/PointRoutines.h
};

class CTranslateProperties : public ProcessingSet<CTranslateProperties> {
  public:
    CTranslateProperties() { CTranslateProperties::SetDefaultValues(); }

    float translateOffset;
    float translateValue;
    int translateFunction;  // 0: set the points to translateValue, 1: move them by translateOffset
};

class CSmoothProperties : public ProcessingSet<CSmoothProperties> {
  public:
    CSmoothProperties() { CSmoothProperties::SetDefaultValues(); }

    float waveLength;  // real x
    CString waveLengthUnit;
};

class CSpikeDetectProperties : public ProcessingSet<CSpikeDetectProperties> {
  public:
    CSpikeDetectProperties() { CSpikeDetectProperties::SetDefaultValues(); }

    CString waveLengthUnit;
    float waveLength;  // real x; 20 where it is missing
    CString windowUnit;
    float windowSize;  // real y; 1 where it is missing
    int showWindow;
};

class CMedianFilterProperties : public ProcessingSet<CMedianFilterProperties> {
  public:
    CMedianFilterProperties() { CMedianFilterProperties::SetDefaultValues(); }

    float filterLength;    // samples; 20 by default, but 11 where it is missing
    float filterDistance;  // real y; 1 where it is missing
    int showWindow;
};

#pragma GCC diagnostic pop
