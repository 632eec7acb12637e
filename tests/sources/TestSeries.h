// A series that keeps nothing but its arrays, and says nothing of what is done to them.
#pragma once

#include <vector>

#include "sources/IPointSource.h"

using Points = std::vector<CPoint>;

// A series of any length whose arrays the test sets, with rejection codes and status words at will.
class CTestSeries : public IPointSource {
  public:
    Points data;
    std::vector<unsigned short> status;
    std::vector<int> rejection;
    bool hasStatus = true;
    bool hasRejection = true;

    void Resize(std::size_t n) {
        data.resize(n);
        status.resize(n);
        rejection.resize(n);
    }
    int Lock() override { return 1; }
    int UnLock() override { return 1; }
    using IPointSource::GetData;
    CPoint* GetData() override { return data.data(); }
    unsigned short* GetStatus() override { return hasStatus ? status.data() : nullptr; }
    int* GetRejection() override { return hasRejection ? rejection.data() : nullptr; }
    long GetCount() override { return static_cast<long>(data.size()); }
    double GetXScale() override { return 1; }
    double GetYScale() override { return 1; }
    CPoint GetOffset() override { return {}; }
    double GetMaxX() override { return 0; }
    double GetMinY() override { return 0; }
    double GetMaxY() override { return 0; }
    double GetMinX() override { return 0; }
    CString GetName() override { return "test"; }
};
