// The ten commands, one per kind of edit. Most record an edit that the data set has done; executed, they do
// it on the whole series. KInterpolateCmd and KSpikeDeleteCmd do the edit themselves.
//
// Execute() returns false without a series. An edit that succeeds sets the series' modified flag. Distances
// are in real units and become stored ones by the series' scale, rounded half away from zero.
#pragma once

#include "editing/KPointSourceCmd.h"

// Moves every point.
class KTranslateCmd : public KPointSourceCmd {
  public:
    KTranslateCmd(IPointSource* source, float dx, float dy);
    bool Execute() override;
    const char* GetName() override;
    const char* GetResultText() override;

  private:
    float dx = 0.0f;
    float dy = 0.0f;
};

// Scales every y by one of the methods of editing/PointRoutines.h; with any other the user is told and
// nothing changes.
class KScaleCmd : public KPointSourceCmd {
  public:
    KScaleCmd(IPointSource* source, int method, float factor, float origin);
    bool Execute() override;
    const char* GetName() override;
    const char* GetResultText() override;

  private:
    float factor = 1.0f;
    float origin = 0.0f;  // real y
    int method = 0;
};

// Smooths all points: the indices given are not kept.
class KSmoothCmd : public KPointSourceCmd {
  public:
    KSmoothCmd(IPointSource* source, const long* indices, int count, float waveLength, float factor);
    bool Execute() override;
    const char* GetName() override;
    const char* GetResultText() override;

  private:
    float waveLength = 20.0f;
    float factor = 1.0f;
};

// Marks the spikes among the points listed.
class KSpikeDetectCmd : public KPointSourceCmd {
  public:
    KSpikeDetectCmd(IPointSource* source, const long* indices, int count, float waveLength,
                    float waveLengthScale, float window);
    bool Execute() override;
    const char* GetName() override;
    const char* GetResultText() override;

  private:
    float waveLength = 20.0f;
    float window = 1.0f;  // real y
    float waveLengthScale = 1.0f;
};

// Gives every point marked as a spike the status `flag` (PS_DELETED or PS_REJECTED); the marks stay. Needs a
// status array. Succeeds also when there is no spike.
class KSpikeDeleteCmd : public KPointSourceCmd {
  public:
    KSpikeDeleteCmd(IPointSource* source, unsigned short flag);
    bool Execute() override;
    const char* GetName() override;
    const char* GetResultText() override;

  private:
    int affected = 0;
    unsigned short flag = 0;
};

// Replaces the y of the points listed by linear interpolation between their neighbours; false when that is
// every point of the series.
class KInterpolateCmd : public KPointSourceCmd {
  public:
    KInterpolateCmd(IPointSource* source, const long* indices, int count);
    bool Execute() override;
    bool QueryFlag2() override { return true; }
    const char* GetName() override;
    const char* GetResultText() override;
};

// The next three are records only.
class KDeleteCmd : public KPointSourceCmd {
  public:
    explicit KDeleteCmd(IPointSource* series) : KPointSourceCmd(series) {}
    const char* GetName() override;
    const char* GetResultText() override;
};

class KRejectCmd : public KPointSourceCmd {
  public:
    explicit KRejectCmd(IPointSource* series) : KPointSourceCmd(series) {}
    const char* GetName() override;
    const char* GetResultText() override;
};

class KClearRejectCmd : public KPointSourceCmd {
  public:
    explicit KClearRejectCmd(IPointSource* series) : KPointSourceCmd(series) {}
    const char* GetName() override;
    const char* GetResultText() override;
};

// Marks the points that lie too far from the median of their neighbours; no mark is removed and the modified
// flag stays. False without a status array or without memory for the medians.
class KMedianFilterSpikeDetectCmd : public KPointSourceCmd {
  public:
    KMedianFilterSpikeDetectCmd(IPointSource* source, const long* indices, int count, float filterLength,
                                float rejectDistance);
    bool Execute() override;
    const char* GetName() override;
    const char* GetResultText() override;

  private:
    float filterLength = 20.0f;   // samples
    float rejectDistance = 1.0f;  // real y
    [[maybe_unused]] float reserved = 1.0f;
};
