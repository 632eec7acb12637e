// A series that is fed while it is shown: it keeps the newest samples, in a window of fixed length that moves
// on with every append. It has neither status words nor rejection codes and is never edited.
//
// It takes no lock: appends, drawing and whoever is told of appends run on one thread.
#pragma once

#include "platform/core/CPointEx.h"
#include "sources/IPointSource.h"
#include "sources/RingExtremes.h"

class COnlineSource : public IPointSource {
    DECLARE_DYNCREATE(COnlineSource)

  public:
    // How the x range presents itself; any other number is the fixed range -1 ... 1.
    enum XMode : int {
        Scrolling = 0,  // the newest sample is at x = 0
        Absolute = 1,
    };

    // Scales are stored counts per real unit. `size` samples are kept, at least 1.
    COnlineSource(CString name, double xScale, double yScale, long size, CString unitX, CString unitY,
                  int xMode);
    COnlineSource(CString name, double xScale, double yScale, long size, int xMode);
    // Keeps nothing before ReSize().
    COnlineSource();
    ~COnlineSource() override;

    int Lock() override { return 1; }
    int UnLock() override { return 1; }
    using IPointSource::GetData;
    CPoint* GetData() override { return ring.GetOldest(); }
    CPoint* GetDrawPoints() override { return ring.GetOldest(); }
    unsigned short* GetStatus() override { return nullptr; }
    long GetCount() override { return static_cast<long>(ring.GetCount()); }
    double GetXScale() override { return xScale; }
    double GetYScale() override { return yScale; }
    CPoint GetOffset() override;
    // Of everything appended since the last UpdateStats(), samples that were overwritten since too. Narrow
    // ranges read wider, a scrolling one is at least 100 stored units long.
    double GetMaxX() override;
    double GetMinY() override;
    double GetMaxY() override;
    double GetMinX() override;
    CString GetName() override { return name; }
    CString GetKey() override { return name; }
    // Brings the extent down to the samples that are kept.
    bool UpdateStats() override;
    // Empties the series.
    void Reset() override;

    // Append samples: stored ones, or one in real units, truncated to stored ones. False when there is no
    // room for any.
    virtual bool AddData(POINT* points, long count);
    virtual bool AddData(double x, double y);

    // The newest sample in real units, offset not included; (0, 0) without any.
    CPointEx GetLatestPoint();
    // Of the samples that are kept, in stored units.
    StoredBox GetWindowExtent() const { return extremes.OfWindow(ring); }
    // Empties the series; its memory stays reserved.
    void Clear();
    // Keeps `size` samples from now on, of those there are the oldest ones that fit. False, and nothing
    // changed, without memory.
    bool ReSize(unsigned int size);
    // Samples appended since the series was made or emptied. The one at GetData()[0] was number
    // GetAppended() - GetCount(), so that a picture knows what is new to it.
    std::uint64_t GetAppended() const { return appended; }

  protected:
    // Appends a stored sample.
    bool Append(CPoint sample) {
        if (ring.GetSize() == 0) return false;
        ring.Push(sample);
        if (RingExtremes::FillsBlock(ring)) extremes.CloseBlock(ring);
        ++appended;
        NoteChange();
        return true;
    }

    int xMode;
    CString name;

  private:
    StoredBox Extent() const;

    double xScale;
    double yScale;
    SampleRing ring;
    RingExtremes extremes;
    std::uint64_t appended = 0;
};
