#include "editing/EditCommands.h"

#include <new>

#include "editing/Interpolate.h"
#include "editing/PointRoutines.h"
#include "editing/SeriesArrays.h"
#include "editing/SmoothingSpline.h"
#include "editing/SpikeDetect.h"

namespace {

// The name of a class of commands, loaded when it is first asked for.
class CommandName {
  public:
    explicit CommandName(unsigned id) {
        if (!name_.LoadString(id)) name_ = "IAction";
    }
    const char* Text() const { return name_; }

  private:
    CString name_;
};

bool Succeed(IPointSource* source) {
    source->SetModified(1);
    return true;
}

}  // namespace

KTranslateCmd::KTranslateCmd(IPointSource* series, float realX, float realY)
    : KPointSourceCmd(series), dx(realX), dy(realY) {}

bool KTranslateCmd::Execute() {
    const EditedArrays series(source);
    if (series.count == 0) return false;
    const int storedX = RoundHalfAway(source->GetXScale() * dx);
    const int storedY = RoundHalfAway(source->GetYScale() * dy);
    const int moved = TranslatePoints(series.data, series.count, nullptr, series.count, storedX, storedY, 1,
                                      series.status, nullptr, 0);
    return moved && Succeed(source);
}

const char* KTranslateCmd::GetName() {
    static const CommandName name(40102);
    return name.Text();
}

const char* KTranslateCmd::GetResultText() {
    return Result(40001, double{dx}, UnitX().GetString(), double{dy}, UnitY().GetString());
}

KScaleCmd::KScaleCmd(IPointSource* series, int scaleMethod, float scaleFactor, float realOrigin)
    : KPointSourceCmd(series), factor(scaleFactor), origin(realOrigin), method(scaleMethod) {}

bool KScaleCmd::Execute() {
    if (!source) return false;
    EditedArrays series(source);
    series.rejection = nullptr;
    const double yScale = source->GetYScale();
    const double storedOrigin = origin * yScale - source->GetOffset().y;
    const Covered all{nullptr, series.count, 1};
    return ScaleByMethod(method, series, all, factor, storedOrigin, yScale, 0) && Succeed(source);
}

const char* KScaleCmd::GetName() {
    static const CommandName name(40103);
    return name.Text();
}

const char* KScaleCmd::GetResultText() {
    return Result(40002, double{factor}, double{origin}, UnitX().GetString());
}

KSmoothCmd::KSmoothCmd(IPointSource* series, const long*, int, float cutOff, float cutOffFactor)
    : KPointSourceCmd(series), waveLength(cutOff), factor(cutOffFactor) {}

bool KSmoothCmd::Execute() {
    const EditedArrays series(source);
    if (series.count == 0) return false;
    const float scaled = waveLength * factor;
    const int smoothed = SmoothPoints(series.data, nullptr, series.count, nullptr, series.count, scaled, 1,
                                      source->GetXScale(), source->GetYScale(), series.status, nullptr, 0);
    return smoothed && Succeed(source);
}

const char* KSmoothCmd::GetName() {
    static const CommandName name(40100);
    return name.Text();
}

const char* KSmoothCmd::GetResultText() { return Result(40006, double{waveLength}, UnitX().GetString()); }

KSpikeDetectCmd::KSpikeDetectCmd(IPointSource* series, const long* listed, int count, float cutOff,
                                 float cutOffScale, float realWindow)
    : KPointSourceCmd(series, listed, count),
      waveLength(cutOff),
      window(realWindow),
      waveLengthScale(cutOffScale) {}

bool KSpikeDetectCmd::Execute() try {
    const EditedArrays series(source);
    if (series.count == 0) return false;
    const std::vector<long> tested = indices.Within(series.count);
    if (tested.empty() && !indices.IsEmpty()) return false;
    const float scaled = waveLength * waveLengthScale;
    const double yScale = source->GetYScale();
    const long* listed = indices.IsEmpty() ? nullptr : tested.data();
    const int testedCount = indices.IsEmpty() ? series.count : static_cast<int>(tested.size());
    const bool found = SpikeDetect(series.data, nullptr, series.count, listed, testedCount, scaled,
                                   RoundHalfAway(yScale * window), 1, source->GetXScale(), yScale, nullptr,
                                   nullptr, series.status);
    return found && Succeed(source);
} catch (const std::bad_alloc&) {
    return false;
}

const char* KSpikeDetectCmd::GetName() {
    static const CommandName name(40104);
    return name.Text();
}

const char* KSpikeDetectCmd::GetResultText() {
    return Result(40003, double{waveLength}, UnitX().GetString(), double{window}, UnitY().GetString());
}

KSpikeDeleteCmd::KSpikeDeleteCmd(IPointSource* series, unsigned short statusFlag)
    : KPointSourceCmd(series), flag(statusFlag) {}

bool KSpikeDeleteCmd::Execute() {
    if (!source || !source->GetStatus()) return false;
    const EditedArrays series(source);
    affected = 0;
    for (int i = 0; i < series.count; ++i) {
        if (!(series.status[i] & PS_SPIKE)) continue;
        series.status[i] |= flag | PS_EDITED;
        if (series.rejection) series.rejection[i] |= REJECT_SPIKE;
        ++affected;
    }
    return Succeed(source);
}

const char* KSpikeDeleteCmd::GetName() {
    static const CommandName name(40105);
    return name.Text();
}

const char* KSpikeDeleteCmd::GetResultText() {
    const long count = source ? source->GetCount() : 0;
    return Result(40004, affected, count > 0 ? affected * 100.0 / double(count) : 0.0);
}

KInterpolateCmd::KInterpolateCmd(IPointSource* series, const long* listed, int count)
    : KPointSourceCmd(series, listed, count) {}

bool KInterpolateCmd::Execute() try {
    const EditedArrays series(source);
    const std::vector<long> replaced = indices.Within(series.count);
    if (replaced.empty() || indices.GetCount() == series.count) return false;
    const int listed = static_cast<int>(replaced.size());
    const int done = InterpolatePoints(series.data, series.count, replaced.data(), listed,
                                       source->GetYScale(), series.status);
    return done && Succeed(source);
} catch (const std::bad_alloc&) {
    return false;
}

const char* KInterpolateCmd::GetName() {
    static const CommandName name(40101);
    return name.Text();
}

const char* KInterpolateCmd::GetResultText() { return Result(40007, IndexCount()); }

const char* KDeleteCmd::GetName() {
    static const CommandName name(40106);
    return name.Text();
}

const char* KDeleteCmd::GetResultText() { return Result(40005); }

const char* KRejectCmd::GetName() {
    static const CommandName name(40108);
    return name.Text();
}

const char* KRejectCmd::GetResultText() { return Result(40110); }

const char* KClearRejectCmd::GetName() {
    static const CommandName name(40109);
    return name.Text();
}

const char* KClearRejectCmd::GetResultText() { return Result(40111); }

KMedianFilterSpikeDetectCmd::KMedianFilterSpikeDetectCmd(IPointSource* series, const long* listed, int count,
                                                         float length, float distance)
    : KPointSourceCmd(series, listed, count), filterLength(length), rejectDistance(distance) {}

bool KMedianFilterSpikeDetectCmd::Execute() try {
    const EditedArrays series(source);
    if (!series.status) return false;
    const MedianTest test(series, TruncateToInt32(filterLength * 0.5),
                          TruncateToInt32(source->GetYScale() * rejectDistance));
    for (int i = 0; i < series.count; ++i)
        if (test.outliers[static_cast<std::size_t>(i)]) series.status[i] |= PS_SPIKE | PS_EDITED;
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

const char* KMedianFilterSpikeDetectCmd::GetName() {
    static const CommandName name(40107);
    return name.Text();
}

const char* KMedianFilterSpikeDetectCmd::GetResultText() {
    return Result(40008, TruncateToInt32(filterLength), double{rejectDistance});
}
