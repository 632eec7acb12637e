#include <gtest/gtest.h>

#include "platform/registry/CWinApp.h"
#include "settings/ApplicationKey.h"
#include "settings/CAxisProperties.h"
#include "settings/CTiledLayoutProperties.h"
#include "settings/KDrawPropertyManager.h"
#include "tests/registry/RegistryFixture.h"

namespace {

class ViewSets : public RegistryFixture {
  protected:
    ViewSets() : host_("Host") { host_.SetRegistryKey("Maker"); }
    ~ViewSets() override { KDrawPropertyManager::Instance().Reset(); }

    static bool KeyExists(const CString& path) {
        CRegKey key;
        return key.Open(HKEY_CURRENT_USER, path) == ERROR_SUCCESS;
    }

    CWinApp host_;
};

TEST_F(ViewSets, AxesComeBackInTwoDecimalsOfSinglePrecision) {
    CAxisProperties axes;
    axes.UnitX = "Tage, ä";
    axes.ShowX = 0;
    axes.YAxisPos = 2;
    axes.MaxX = 1.234;
    axes.MinY = -250.5;
    axes.SaveToRegistry("View 1");
    EXPECT_EQ(host_.GetProfileString("View 1", "MaxX"), "1.23");

    CAxisProperties loaded;
    loaded.LoadFromRegistry("View 1");
    EXPECT_EQ(loaded.UnitX, "Tage, ä");
    EXPECT_EQ(loaded.ShowX, 0);
    EXPECT_EQ(loaded.YAxisPos, 2);
    EXPECT_EQ(loaded.MinX, -1.0);
    EXPECT_EQ(loaded.MaxX, 1.2300000190734863);
    EXPECT_EQ(loaded.MinY, -250.5);

    host_.WriteProfileString("View 1", "MinY", "deep");
    loaded.LoadFromRegistry("View 1");
    EXPECT_EQ(loaded.MinY, -250.5);
}

TEST_F(ViewSets, AnEmptySectionKeepsAllButTheTiles) {
    CAxisProperties axes;
    axes.MaxX = 7.125;
    axes.UnitX = "h";
    axes.LoadFromRegistry("Nothing");
    EXPECT_EQ(axes.UnitX, "h");
    EXPECT_EQ(axes.MaxX, 7.125);  // not even rounded: nothing was read
    CTiledLayoutProperties tiles;
    tiles.NumColumns = 7;
    tiles.NumSourcesPerTile = 9;
    tiles.LoadFromRegistry("Nothing");
    EXPECT_EQ(tiles.NumColumns, 2);
    EXPECT_EQ(tiles.NumSourcesPerTile, 1);
}

TEST(AxisSet, WidensAboutTheCentre) {
    CAxisProperties axes;
    axes.ScaleX(2.0);
    axes.ScaleY(0.5);
    EXPECT_EQ(axes.GetOrg().x, -2.0);
    EXPECT_EQ(axes.GetExtent().cx, 4.0);
    EXPECT_EQ(axes.GetOrg().y, -0.5);
    EXPECT_EQ(axes.GetExtent().cy, 1.0);
}

TEST_F(ViewSets, SeriesWithoutARecordAreDrawnLikeTheDefault) {
    auto& manager = KDrawPropertyManager::Instance();
    host_.WriteProfileInt("Settings", "Default graph color", 0x0000AA);
    EXPECT_EQ(manager.GetProperty("plain").getColor(), 0x0000AAu);
    EXPECT_EQ(manager.GetProperty("plain").getDotSize(), 2);

    KDrawProperty usual;
    usual.setColor(0xFFFFFFFF);
    usual.setDotSize(5);
    manager.SetDefault(usual);
    EXPECT_EQ(manager.GetProperty("plain").getDotSize(), 2) << "in use: keeps its value";
    EXPECT_EQ(manager.GetProperty("Tide").getDotSize(), 5);
    EXPECT_EQ(manager.GetProperty("Tide").getColor(), 0xFFFFFFFFu);
    EXPECT_FALSE(KeyExists(DrawPropertyKey("Tide"))) << "the probe leaves nothing behind";

    manager.GetProperty("Tide").setDrawStyle(1);
    manager.Save("Tide");
    manager.Save("never used");
    EXPECT_FALSE(KeyExists(DrawPropertyKey("never used")));
    manager.Reset("Tide");
    EXPECT_EQ(manager.GetProperty("Tide").getDrawStyle(), 1);
    // Two entries, one record: the store ignores case.
    EXPECT_EQ(manager.GetProperty("TIDE").getDrawStyle(), 1);
    manager.GetProperty("TIDE").setDrawStyle(0);
    EXPECT_EQ(manager.GetProperty("Tide").getDrawStyle(), 1);
}

TEST_F(ViewSets, SavingAllForgetsWhatWasInUse) {
    auto& manager = KDrawPropertyManager::Instance();
    manager.GetProperty("a").setLineStyle(3);
    KDrawProperty other;
    other.setLegend(1);
    manager.SetProperty("b", other);
    manager.Save();
    host_.WriteProfileInt("Settings", "Default graph color", 0x000001);
    EXPECT_EQ(manager.GetProperty("a").getLineStyle(), 3);
    EXPECT_EQ(manager.GetProperty("b").getLegend(), 1);
    EXPECT_EQ(manager.GetProperty("b").getColor(), 0x825B00u);
}

}  // namespace
