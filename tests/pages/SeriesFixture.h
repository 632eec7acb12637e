// Named series, a profile, and how lists of series read.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "platform/registry/CWinApp.h"
#include "sources/KPointSource.h"
#include "tests/registry/RegistryFixture.h"

// Samples at whole stored units.
inline std::unique_ptr<KPointSource> NewSeries(const char* name, const std::vector<CPoint>& samples = {}) {
    auto series = std::make_unique<KPointSource>(name, 1.0, 1.0, "s", "m", 16, 16);
    for (const CPoint& sample : samples) series->push_back(sample);
    return series;
}

inline std::string NamesIn(const std::list<IPointSource*>& series) {
    std::string names;
    for (IPointSource* const one : series) names += std::string(one->GetName()) + " ";
    return names;
}

class SeriesFixture : public RegistryFixture {
  protected:
    void SetUp() override {
        RegistryFixture::SetUp();
        application.SetRegistryKey("Maker");
    }
    static std::string ValuesBelow(const CString& path) {
        CRegKey key;
        if (key.Open(HKEY_CURRENT_USER, path) != ERROR_SUCCESS) return "(no key)";
        std::string names;
        for (const std::string& name : NamesOf(key)) names += name + " ";
        return names;
    }

    CWinApp application{"Viewer"};
    std::unique_ptr<KPointSource> a = NewSeries("A"), b = NewSeries("B"), c = NewSeries("C");
    std::list<IPointSource*> hidden;
    std::list<IPointSource*> shown;
};
