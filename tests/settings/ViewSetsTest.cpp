#include <gtest/gtest.h>

#include "platform/registry/CWinApp.h"
#include "settings/ApplicationKey.h"
#include "settings/CAxisProperties.h"
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
    EXPECT_EQ(manager.GetProperty("Buoy\\Tide").getDotSize(), 5);
    for (const char* probed : {"Tide", "Buoy"})
        EXPECT_FALSE(KeyExists(DrawPropertyKey(probed))) << "the probe leaves nothing behind";

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

TEST_F(ViewSets, ARecordKeepsEachOfItsValuesUnderItsName) {
    KDrawProperty set;
    set.setColor(1);
    set.setLineStyle(2);
    set.setDotSize(3);
    set.setLegend(4);
    set.setDrawStyle(5);
    ASSERT_TRUE(set.exchange(HKEY_CURRENT_USER, "Record", true));
    CRegKey key;
    ASSERT_EQ(key.Open(HKEY_CURRENT_USER, "Record"), ERROR_SUCCESS);
    std::string stored;
    for (const char* name : {"color", "lineStyle", "dotSize", "legend", "drawStyle"})
        stored += GetBytes(key, name).c_str();
    EXPECT_EQ(stored, "12345");
    KDrawProperty loaded;
    ASSERT_TRUE(loaded.exchange(HKEY_CURRENT_USER, "Record", false));
    EXPECT_EQ(loaded.getColor(), 1u);
    EXPECT_EQ(loaded.getLineStyle(), 2);
    EXPECT_EQ(loaded.getDotSize(), 3);
    EXPECT_EQ(loaded.getLegend(), 4);
    EXPECT_EQ(loaded.getDrawStyle(), 5);
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
