// What the tests of the data set share: series that are filled at once, a series whose every array can be
// missing, an undo manager for the length of a test, and the messages that the user would have seen.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <list>
#include <string>
#include <vector>

#include "editing/CXYEditData.h"
#include "platform/core/MessageBox.h"
#include "platform/undo/KUndoManager.h"
#include "sources/KPointSource.h"

// A series that keeps rejection codes, has draw points of its own where they are given, and can lose its
// status words.
class FullSource : public KPointSource {
  public:
    explicit FullSource(const std::vector<CPoint>& points, double scaleX = 1.0, double scaleY = 1.0)
        : KPointSource("full", scaleX, scaleY, "s", "m", static_cast<int>(points.size()), 1),
          codes(points.size()) {
        for (const CPoint& point : points) push_back(point);
    }
    CPoint* GetDrawPoints() override { return drawPoints.empty() ? GetData() : drawPoints.data(); }
    unsigned short* GetStatus() override { return hasStatus ? KPointSource::GetStatus() : nullptr; }
    int* GetRejection() override { return hasCodes ? codes.data() : nullptr; }
    std::list<IPointSource*> GetPointSources() override { return parts; }

    std::vector<int> Ys() {
        std::vector<int> ys;
        for (long i = 0; i < GetCount(); ++i) ys.push_back(GetData()[i].y);
        return ys;
    }
    std::vector<unsigned short> Words() {
        return {KPointSource::GetStatus(), KPointSource::GetStatus() + GetCount()};
    }

    std::vector<int> codes;
    std::vector<CPoint> drawPoints;
    std::list<IPointSource*> parts;
    bool hasStatus = true;
    bool hasCodes = true;
};

// Points at x = 0, 10, 20 ... with these y.
inline std::vector<CPoint> AtTens(std::initializer_list<int> ys) {
    std::vector<CPoint> points;
    for (const int y : ys) points.emplace_back(static_cast<int>(points.size()) * 10, y);
    return points;
}

class EditingTest : public ::testing::Test {
  protected:
    EditingTest()
        : previousManager(kelvo::SetUndoManager(&manager)),
          previousHandler(SetMessageBoxHandler([this](const char* text, UINT) {
              messages.push_back(text);
              return IDOK;
          })) {}
    ~EditingTest() override {
        SetMessageBoxHandler(previousHandler);
        kelvo::SetUndoManager(previousManager);
    }

    // The last command recorded for the series, as "name: result"; empty when there is none.
    std::string Last(IPointSource& series) {
        kelvo::IAction* action = manager.GetAction(&series, manager.GetCount(&series) - 1);
        return action ? std::string(action->GetName()) + ": " + action->GetResultText() : std::string();
    }

    kelvo::KUndoManager manager;
    std::vector<std::string> messages;

  private:
    kelvo::KUndoManager* previousManager;
    MessageBoxHandler previousHandler;
};
